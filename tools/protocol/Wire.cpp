#include "Wire.h"

#include <QElapsedTimer>
#include <QtEndian>
#include <zlib.h>

namespace
{
constexpr int headSize = 8;
constexpr int limitMs = 30000;

template <typename Number> QByteArray little(Number number)
{
    QByteArray bytes(sizeof number, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}
} // namespace

QByteArray wireFrame(const QByteArray &start, const QByteArray &command, const QByteArray &payload)
{
    return start + little(quint32(payload.size())) + command + payload;
}

QByteArray wireBlock(quint32 number, const QByteArray &data, bool soundSum)
{
    const quint32 sum =
        quint32(crc32(0, reinterpret_cast<const Bytef *>(data.constData()), uInt(data.size())));
    return "\xA5\x5A" + little(quint32(data.size())) + little(number) + little(soundSum ? sum : ~sum) + data;
}

QByteArray wireAnnounce(const QByteArray &start, quint64 size, const QByteArray &name)
{
    return wireFrame(start, QByteArray("\x02\x00", 2), little(size) + name + '\0');
}

bool Wire::connectTo(quint16 port, int timeoutMs)
{
    m_socket.abort();
    m_socket.connectToHost(QStringLiteral("127.0.0.1"), port);
    m_socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
    return m_socket.waitForConnected(timeoutMs);
}

void Wire::close()
{
    m_socket.abort();
}

void Wire::send(const QByteArray &bytes)
{
    m_socket.write(bytes);
    while (m_socket.bytesToWrite() > 0 && m_socket.waitForBytesWritten(limitMs)) {
    }
}

QByteArray Wire::take(int count, int timeoutMs)
{
    QElapsedTimer clock;
    clock.start();
    while (m_socket.bytesAvailable() < count) {
        const int left = timeoutMs - int(clock.elapsed());
        if (left <= 0 || !m_socket.waitForReadyRead(left))
            break;
    }
    return m_socket.read(count);
}

QByteArray Wire::takeFrame(int timeoutMs)
{
    const QByteArray head = take(headSize, timeoutMs);
    if (head.size() < headSize)
        return head;
    return head + take(int(qFromLittleEndian<quint32>(head.constData() + 2)), timeoutMs);
}

bool Wire::confirm(const QByteArray &request, const QByteArray &answer)
{
    send(request);
    return take(answer.size(), limitMs) == answer;
}

bool Wire::upload(const QByteArray &name, const QByteArray &data, int blockSize)
{
    const QByteArray own("\x5A\xA5", 2);
    if (!confirm(wireAnnounce(own, quint64(data.size()), name), own + QByteArray("\x04\0\0\0\x02\0\0\0", 8)))
        return false;
    quint32 number = 0;
    for (int at = 0; at < data.size(); at += blockSize, ++number) {
        const QByteArray written = own + little(quint32(6)) + little(number) + little(quint16(0));
        if (!confirm(wireBlock(number, data.mid(at, blockSize)), written))
            return false;
    }
    return confirm(wireFrame(own, QByteArray("\x02\x01", 2), {}), own + QByteArray("\x02\0\0\0\x02\x01", 6));
}
