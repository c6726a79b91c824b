#include "links/CanMsg.h"

#include <QtEndian>

static_assert(Q_BYTE_ORDER == Q_LITTLE_ENDIAN, "id lies in the record as the bus has it");

CanMsg canMessage(quint32 board, quint8 command)
{
    CanMsg message;
    message.id = board;
    message.data[0] = command;
    return message;
}

void setValue32(CanMsg &message, qint32 value)
{
    qToLittleEndian(value, message.data + 4);
}

qint32 value32(const CanMsg &message)
{
    return qFromLittleEndian<qint32>(message.data + 4);
}

void setValue16(CanMsg &message, int at, quint16 value)
{
    Q_ASSERT(at >= 0 && at <= 6);
    qToLittleEndian(value, message.data + at);
}

quint16 value16(const CanMsg &message, int at)
{
    Q_ASSERT(at >= 0 && at <= 6);
    return qFromLittleEndian<quint16>(message.data + at);
}

QString hexText(const CanMsg &request, const CanMsg &answer)
{
    const auto hex = [](const void *bytes, int length) {
        return QByteArray::fromRawData(static_cast<const char *>(bytes), length).toHex('-');
    };
    constexpr int idAndData = 12;
    return QString::fromLatin1(hex(&request, idAndData) + ' ' + hex(answer.data, sizeof answer.data));
}
