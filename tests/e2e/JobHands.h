#pragma once
// What a test does to a job that runs: a hand on the screen and one on the machine.

#include "TestPrinter.h"

constexpr int waitLimitMs = 180000;
constexpr double partHeightMm = 2.5; // enough layers for a hand on the screen

/// Passes fired so far.
int passes(PrinterRig &rig);
/// Waits until a layer is in work, by the machine: the page refreshes every 5 s.
bool atLayer(PrinterRig &rig, int layer);
bool machine(PrinterRig &rig, const QStringList &command);
/// A waiting job's message comes back at each look, so the operator closes it and is quick.
bool pressStop(PrinterRig &rig);
