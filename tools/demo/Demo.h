#pragma once
// The demo: one mesh from file to proven layers on the simulated machine.

#include "PrinterRig.h"

struct DemoOptions
{
    QString install; ///< complete installation folder; queue and models of an earlier demo are gone
    QString mesh;    ///< STL, OBJ, PLY or 3MF
    QString out;     ///< folder for model, report and pictures
    double scale = 100;
    bool panel = false;  ///< the machine has its panel, too, and panel.png shows it in the middle of the print
    bool screen = false; ///< leave window and machine to the person
};

/// 0: printed, no violation, no differing dot. Prints what it does to standard output.
int runDemo(const DemoOptions &options);

/// Leaves a window with a plugged USB folder to the person until it is closed.
int runScreen(const DemoOptions &options);
