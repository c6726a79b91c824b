#pragma once
// The one form of the program's own log lines: "[func: name line:n]" directly followed by the text.

#include <QDebug>
#include <QString>

#include <cstring>

/// A function's name as the log spells it: a lambda is "operator ()", whatever the compiler makes of it.
inline QLatin1String logFunctionName(const char *name)
{
    return QLatin1String(std::strcmp(name, "operator()") == 0 ? "operator ()" : name);
}

/// Writes a warning line to pelora.log once the log handler is installed. Any thread.
#define LOG_WARNING(text)                                                                                    \
    (qWarning() << (QStringLiteral("[func: %1 line:%2]").arg(logFunctionName(__func__)).arg(__LINE__) +      \
                    (text)))
