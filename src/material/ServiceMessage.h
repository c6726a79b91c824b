#pragma once
// How the parts of the background service reach the operator.

#include "events/OperatorMessage.h"

#include <functional>

/// Shows a message; icon and buttons as in events/OperatorMessage.h. Waits for the form, never for the
/// operator. Any thread but the GUI's.
using ServiceMessage = std::function<void(quint32 id, const QString &prompt, int icon, int btn)>;

/// The message of a fault.
inline void showAlarm(const ServiceMessage &show, quint32 id, const QString &prompt)
{
    show(id, prompt, MessageIcon::critical, MessageButtons::close);
}
