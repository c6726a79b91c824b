#pragma once
// What the board commands share. Private to this folder.

#include "links/CanMsg.h"
#include "links/Usb2Can.h"

#include <initializer_list>

/// The command function that a shared helper speaks for in the log.
struct LogOrigin {
    const char *function;
    int line;

    static LogOrigin current(const char *function = __builtin_FUNCTION(), int line = __builtin_LINE())
    {
        return {function, line};
    }
};

/// A log line in the name of `origin`.
void logFor(const LogOrigin &origin, const QString &text);

/// A message with bytes from data[at] on.
CanMsg byteMessage(quint32 board, quint8 command, int at, std::initializer_list<quint8> bytes);
/// A message with a value in data[4..7].
CanMsg valueMessage(quint32 board, quint8 command, qint32 value);

/// Sends `message`, which then holds the answer, and logs a failure. The SendMsg result.
int send(CanMsg &message, const LogOrigin &origin = LogOrigin::current());
/// For commands whose answer does not matter. True when it was answered.
bool sendOnly(CanMsg message, const LogOrigin &origin = LogOrigin::current());
/// As `send`, and logs request and answer in hexadecimal; `failure` replaces the usual text.
int sendTraced(CanMsg &message, const QString &failure = QString(),
               const LogOrigin &origin = LogOrigin::current());
/// One byte of the answer to a query, `failed` when there was none.
int queryByte(quint32 board, quint8 command, int at, int failed,
              const LogOrigin &origin = LogOrigin::current());

/// Towards zero; what does not fit becomes the nearest that does, and no number becomes 0.
qint32 truncated(float value);
