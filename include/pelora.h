#pragma once
// The one function that the control program's library exports. A launcher sets the working directory to the
// installation folder and calls it from main.

#ifdef PELORA_BUILDING
#define PELORA_API __attribute__((visibility("default")))
#else
#define PELORA_API
#endif

/// Runs the whole program and returns the exit code of its event loop. Main thread only, once per process.
extern "C" PELORA_API int execMain(int argc, char **argv);
