#include "links/BoardCall.h"

#include <QDebug>

#include <algorithm>
#include <cmath>
#include <limits>

void logFor(const LogOrigin &origin, const QString &text)
{
    qWarning() << (QStringLiteral("[func: %1 line:%2]").arg(QLatin1String(origin.function)).arg(origin.line) +
                   text);
}

CanMsg byteMessage(quint32 board, quint8 command, int at, std::initializer_list<quint8> bytes)
{
    CanMsg message = canMessage(board, command);
    Q_ASSERT(at >= 0 && at + bytes.size() <= sizeof message.data);
    std::copy(bytes.begin(), bytes.end(), message.data + at);
    return message;
}

CanMsg valueMessage(quint32 board, quint8 command, qint32 value)
{
    CanMsg message = canMessage(board, command);
    setValue32(message, value);
    return message;
}

static int sendOrLog(CanMsg &message, const QString &failure, const LogOrigin &origin)
{
    const int result = sendCommand(message, &message);
    if (result != SendOk)
        logFor(origin, failure.isEmpty() ? QStringLiteral("can request msg error=%1").arg(result) : failure);
    return result;
}

int send(CanMsg &message, const LogOrigin &origin)
{
    return sendOrLog(message, QString(), origin);
}

bool sendOnly(CanMsg message, const LogOrigin &origin)
{
    return send(message, origin) == SendOk;
}

int sendTraced(CanMsg &message, const QString &failure, const LogOrigin &origin)
{
    const CanMsg request = message;
    const int result = sendOrLog(message, failure, origin);
    logFor(origin, hexText(request, message));
    return result;
}

int queryByte(quint32 board, quint8 command, int at, int failed, const LogOrigin &origin)
{
    CanMsg message = canMessage(board, command);
    return send(message, origin) == SendOk ? message.data[at] : failed;
}

qint32 truncated(float value)
{
    if (std::isnan(value))
        return 0;
    constexpr double low = std::numeric_limits<qint32>::min();
    constexpr double high = std::numeric_limits<qint32>::max();
    return qint32(std::clamp(double(value), low, high));
}
