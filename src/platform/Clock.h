#pragma once
// The product's one sleep.

/// Sleeps for `ms` milliseconds divided by PELORA_TIME_SCALE (1 when absent or not above 0). Any thread.
/// Time-outs that wait for a real answer are never scaled: they do not come here.
void Sleep(unsigned ms);

/// The factor read from PELORA_TIME_SCALE at first use.
double timeScale();
