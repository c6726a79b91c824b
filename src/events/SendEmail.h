#pragma once
// Notices by e-mail, sent by the external tool Postrel.

#include <QByteArray>
#include <QString>

class JsonConfig;

/// config/email.json: the account, the recipients and what the daily mail tells. Any thread.
JsonConfig *emailConfig();

/// The tool's time for one mail.
constexpr int mailToolLimitMs = 30000;

/// Sends a plain-text mail to the configured recipients. Blocks up to `limitMs`, then ends the tool. A line
/// break and what the tool said; empty, and nothing sent, for an empty body. Any thread.
QByteArray SendEmail(const QString &subject, const QString &body, int limitMs = mailToolLimitMs);
