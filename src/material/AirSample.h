#pragma once
// The line of air.csv: pressures of the air board and the tanks of the heads.

#include <QString>

/// Asks the air board for its readings; a silent board reads as zeros. Service thread.
QString airSampleLine();
