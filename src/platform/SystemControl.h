#pragma once
// What the program may do to itself and to its computer.

#include <QString>

/// Ends this process at once, with no clean-up. Any thread. Does not return.
[[noreturn]] void exitNow();

/// Restarts or powers off the computer. Carried out only where config/Platform.json says "AllowSystem": true;
/// otherwise the command is logged and taken as done. True when taken as done.
bool restartSystem();
bool powerOffSystem();
