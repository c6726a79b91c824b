#pragma once
// What the program may do to itself and to its computer.

#include "platform/LanAddress.h"

/// Ends this process at once, with no clean-up. Any thread. Does not return.
[[noreturn]] void exitNow();

/// Restarts or powers off the computer. Carried out only where config/Platform.json says "AllowSystem": true;
/// otherwise the command is logged and taken as done. True when taken as done.
bool restartSystem();
bool powerOffSystem();

enum class LanResult {
    Done,
    Refused,   ///< the system did not take the command
    Cancelled, ///< somebody at the system ended it
    NotFound,  ///< no connection is called `lan`
};

/// Gives the network connection called `lan` this address, which must be faultless. Under the same condition
/// as above: otherwise logged and Done. Blocks until the system has taken it, up to 20 s. Any thread.
LanResult setLanAddress(const LanAddress &address);
