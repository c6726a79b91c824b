#pragma once
// Where a pass of a layer is printed: picture rows, nozzles and Y. Numbers of the process. Any thread.

/// Y units between two nozzle rows.
constexpr double nozzlePitch = 168.8;
/// Y position of phase 0.
constexpr double yBase = 12000.0;
/// A layer is four sweeps: reverse, forward, reverse, forward.
constexpr int passesPerLayer = 4;
/// Micrometres of an inch.
constexpr float inchUm = 25400.0f;

/// True for the interlace counts that the pass order knows: 4, 8 and 12 picture rows a nozzle.
bool isKnownPassCount(int passCnt);

/// Nozzle rows by which a layer is shifted. The pictures move up and the carriage back by as much, so over
/// nine layers a weak nozzle's track is spread over nine picture rows.
int nozzleShift(int layer);

/// Which picture rows, modulo `passCnt`, a pass prints. `passCnt` is 4, 8 or 12.
int layerPhase(int pass, int layer, int passCnt);

/// Y of a pass, not rounded.
float passY(int phase, int layer, int passCnt);

/// An X position in micrometres as encoder counts.
int encoderCounts(float micrometres, float countsPerInch);
