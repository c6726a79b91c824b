#pragma once
// New firmware for the machine boards: images "firmware/<board>.bin", pushed over the bus before anything else
// talks to the boards.

#include <QString>
#include <functional>

/// Shows text to the operator; icon and buttons as in events/OperatorMessage.h.
using UpdateMessage = std::function<void(const QString &text, int icon, int btn)>;

/// Updates the boards 8 down to 2 for which an image is there, and tells how each goes. True when an image was
/// found: the machine then has to be switched off and on. Service thread, before any other command.
bool updateStm32(const UpdateMessage &show);
