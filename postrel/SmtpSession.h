#pragma once
// One mail to one mail server, through libcurl.

#include "Account.h"
#include "Failure.h"

#include <QByteArray>

/// Seconds for the whole session: the machine waits 30 for the tool.
constexpr long sessionLimit = 25;

/// Sends `message`. `authorities` is a file of further certificate authorities, or empty. What was refused
/// to single recipients, one "address (reply)" each; the others have got the mail. Throws a Failure when
/// nobody has.
QStringList sendMail(const Account &account, const QByteArray &message, const QString &authorities);
