#pragma once
// How worker threads word a message for the operator, and how they wait for the answer. The form itself is
// above.

#include <QString>
#include <functional>

namespace MessageIcon
{
constexpr int none = 0;
constexpr int information = 1;
constexpr int warning = 2;
constexpr int critical = 3;
} // namespace MessageIcon

namespace MessageButtons
{
constexpr int none = 0;
constexpr int dismiss = 0x400; ///< takes the message down
constexpr int yesNo = 0x14000;
constexpr int close = 0x200000;
} // namespace MessageButtons

/// An event id as the title of a message: 8 hexadecimal digits.
QString messageTitle(quint32 id);

/// Installed by the message form. Called from worker threads.
void setMessageWaiter(std::function<int()> waiter);

/// Blocks until the form on screen is closed and returns its answer: not 0 is Yes. 0 at once when there is no
/// form. Any thread but the GUI thread.
int waitMessageForm();
