#pragma once
// Frames of the remote protocol as a client sees them. It shares no code with the program. One thread.

#include <QByteArray>
#include <QTcpSocket>

/// Start word, length, command, payload.
QByteArray wireFrame(const QByteArray &start, const QByteArray &command, const QByteArray &payload);
/// A data block of an upload; `soundSum` false spoils its checksum.
QByteArray wireBlock(quint32 number, const QByteArray &data, bool soundSum = true);
/// Announces an upload.
QByteArray wireAnnounce(const QByteArray &start, quint64 size, const QByteArray &name);

class Wire
{
public:
    bool connectTo(quint16 port, int timeoutMs = 10000);
    void close();
    void send(const QByteArray &bytes);
    /// The next `count` bytes; fewer when they did not come in time.
    QByteArray take(int count, int timeoutMs);
    /// The next frame, head to payload; less when it did not come in time.
    QByteArray takeFrame(int timeoutMs);
    /// Sends a whole file as an upload under this name, in blocks of this size; whether every step was
    /// confirmed.
    bool upload(const QByteArray &name, const QByteArray &data, int blockSize);

private:
    bool confirm(const QByteArray &request, const QByteArray &answer);

    QTcpSocket m_socket;
};
