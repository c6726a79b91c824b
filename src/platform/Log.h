#pragma once
// The one form of the program's own log lines: "[func: name line:n]" directly followed by the text.

#include <QDebug>
#include <QString>

/// Writes a warning line to pelora.log once the log handler is installed. Any thread.
#define LOG_WARNING(text)                                                                                    \
    (qWarning() << (QStringLiteral("[func: %1 line:%2]").arg(QLatin1String(__func__)).arg(__LINE__) +        \
                    (text)))
