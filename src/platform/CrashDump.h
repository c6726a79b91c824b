#pragma once

/// Installs the crash handler: on a fatal signal it writes <yyyyMMddhhmmss>.dmp with signal, registers,
/// backtrace and loaded modules to `folder`, using only calls that are safe in a signal handler, and lets the
/// process die of the signal. `folder` ends with "/" and is relative to the working directory. Main thread,
/// once, first.
void installCrashHandler(const char *folder);
