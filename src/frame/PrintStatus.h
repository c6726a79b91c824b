#pragma once
// The one integer by which other threads touch a running job.

#include <atomic>

enum PrintStatus : int {
    PrintStatusPrinting = 0,
    PrintStatusPaused = 1,
    PrintStatusIdle = 2 ///< stopped or idle
};

/// The process's status, 2 at start. Written through PrintService::setPrintStatus alone. Any thread.
std::atomic<int> &printStatus();
