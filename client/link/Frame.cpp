#include "link/Frame.h"

#include <QJsonDocument>
#include <QtEndian>
#include <zlib.h>

namespace
{
template <typename T> QByteArray number(T value)
{
    QByteArray bytes(int(sizeof value), 0);
    qToLittleEndian(value, bytes.data());
    return bytes;
}
} // namespace

QByteArray frame::json(const QJsonObject &object)
{
    const QByteArray text = QJsonDocument(object).toJson(QJsonDocument::Compact);
    return binary(0xFF, 0xFF, text);
}

QByteArray frame::binary(quint8 command, quint8 subCommand, const QByteArray &payload)
{
    return QByteArray("\x5A\xA5", 2) + number(quint32(payload.size())) + char(command) + char(subCommand) +
           payload;
}

QByteArray frame::block(quint32 blockNumber, const QByteArray &payload)
{
    const auto sum = crc32(0, reinterpret_cast<const Bytef *>(payload.constData()), uInt(payload.size()));
    return QByteArray("\xA5\x5A", 2) + number(quint32(payload.size())) + number(blockNumber) +
           number(quint32(sum)) + payload;
}

QByteArray frame::announcement(quint64 size, const QString &name)
{
    return number(size) + name.toUtf8() + '\0';
}

quint32 frame::lengthOf(const QByteArray &head)
{
    return qFromLittleEndian<quint32>(head.constData() + 2);
}

bool frame::isJson(const QByteArray &head)
{
    return head.at(6) == '\xFF' && head.at(7) == '\xFF';
}
