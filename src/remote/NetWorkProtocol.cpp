#include "remote/NetWorkProtocol.h"

#include "platform/Log.h"
#include "remote/RemoteCall.h"

#include <QJsonDocument>
#include <QTcpSocket>
#include <QtEndian>

#include <zlib.h>

namespace
{
constexpr int writeLimitMs = 30000;
constexpr int keptCapacity = 128 << 10; // of an emptied buffer: room for a block, nothing of what was huge

constexpr int minimumBytes = 3;
constexpr int lengthAt = 2;
constexpr int minimumFrame = 6;
constexpr int commandAt = 6;
constexpr int headSize = 8;

const QByteArray blockStart = QByteArray::fromHex("A55A");
constexpr int blockNumberAt = 6;
constexpr int blockSumAt = 10;
constexpr int blockHeadSize = 14;
constexpr int loggedText = 64 << 10; // of a request that nobody knows

enum BlockStatus : quint16 { BlockWritten = 0, BlockSumWrong = 1 };

quint32 word(const QByteArray &bytes, int at)
{
    return qFromLittleEndian<quint32>(bytes.constData() + at);
}

bool isJson(const QByteArray &frame)
{
    return frame.size() >= headSize && frame.at(commandAt) == '\xFF' && frame.at(commandAt + 1) == '\xFF';
}

QByteArray blockReply(const QByteArray &block, BlockStatus status)
{
    QByteArray reply = QByteArray::fromRawData("\x5A\xA5\x06\0\0\0", 6) + block.mid(blockNumberAt, 4);
    reply.append(char(status));
    return reply.append('\0');
}

void emptyBuffer(QByteArray &buffer)
{
    if (buffer.capacity() != keptCapacity) {
        buffer = QByteArray();
        buffer.reserve(keptCapacity);
    }
    buffer.resize(0);
}

// The announced text counts, so that bytes behind it do no harm. If that is no JSON the length may be too
// small, or a zero byte may end the text early. `text` is what a handler may store: all that was announced.
QJsonDocument parseText(const QByteArray &frame, QByteArray &text, QJsonParseError &error)
{
    const int arrived = frame.size() - headSize;
    text = frame.mid(headSize, int(qMin<qint64>(word(frame, lengthAt), arrived)));
    const QJsonDocument announced = QJsonDocument::fromJson(text, &error);
    if (error.error == QJsonParseError::NoError)
        return announced;
    const QByteArray upToZero =
        frame.mid(headSize, int(qstrnlen(frame.constData() + headSize, uint(arrived))));
    const QJsonDocument document = QJsonDocument::fromJson(upToZero, &error);
    if (upToZero.size() > text.size())
        text = upToZero;
    return document;
}
} // namespace

quint16 startWord(const QByteArray &frame)
{
    return frame.size() < 2 ? 0 : qFromBigEndian<quint16>(frame.constData());
}

NetWorkProtocol::NetWorkProtocol(const QVector<RemoteCommand> &commands)
    : m_client(new ClientLink), m_commands(commands)
{
}

NetWorkProtocol::~NetWorkProtocol()
{
    delete m_client;
}

void NetWorkProtocol::buildFrame(QByteArray &out, const char *data, int length, quint16 head, quint16 tail)
{
    char front[headSize];
    qToBigEndian(head, front);
    qToLittleEndian(quint32(length), front + lengthAt);
    qToBigEndian(tail, front + commandAt);
    out.reserve(out.size() + headSize + length);
    out.append(front, headSize);
    out.append(data, length);
}

int NetWorkProtocol::sendFrame(QTcpSocket *socket, const char *data, int length, quint16 head, quint16 tail)
{
    QByteArray frame;
    buildFrame(frame, data, length, head, tail);
    return writeGuarded(socket, frame);
}

int NetWorkProtocol::sendJson(QTcpSocket *socket, const QJsonObject &object, quint16 head, quint16 tail)
{
    const QByteArray text = QJsonDocument(object).toJson();
    return sendFrame(socket, text.constData(), text.size(), head, tail);
}

int NetWorkProtocol::writeGuarded(QTcpSocket *socket, const QByteArray &bytes)
{
    MutexLock lock(m_sendMutex);
    if (!socket || !socket->isOpen() || !socket->isWritable() ||
        socket->state() != QAbstractSocket::ConnectedState)
        return 0;
    const qint64 written = socket->write(bytes);
    socket->flush();
    socket->waitForBytesWritten(writeLimitMs);
    return int(qMax<qint64>(written, 0));
}

void NetWorkProtocol::writeAtOnce(QTcpSocket *socket, const QByteArray &bytes)
{
    MutexLock lock(m_sendMutex);
    if (socket && socket->isOpen() && socket->isWritable())
        socket->write(bytes);
}

void NetWorkProtocol::readData(ClientLink *link)
{
    QTcpSocket *socket = link->socket;
    // Waiting for a reply to go out may have fetched bytes that no signal tells of.
    while (const qint64 size = socket->bytesAvailable()) {
        if (!makeRoom(link, size)) {
            socket->skip(size);
            continue;
        }
        const int before = link->buffer.size();
        link->buffer.resize(before + int(size));
        const qint64 count = socket->read(link->buffer.data() + before, size);
        link->buffer.resize(before + int(qMax<qint64>(count, 0)));
        takeBuffer(link);
        if (count <= 0)
            return;
    }
}

void NetWorkProtocol::takeBytes(ClientLink *link, const QByteArray &bytes)
{
    if (!makeRoom(link, bytes.size()))
        return;
    link->buffer.append(bytes);
    takeBuffer(link);
}

/// False: with `size` more bytes the buffer would be too large, and what was in it is gone.
bool NetWorkProtocol::makeRoom(ClientLink *link, qint64 size)
{
    if (link->buffer.size() + size <= bufferLimit)
        return true;
    LOG_WARNING(QStringLiteral("%1 bytes of no frame dropped").arg(link->buffer.size() + size));
    emptyBuffer(link->buffer);
    return false;
}

/// The buffer is emptied whole, whatever the length of the frame: the client sends one and waits for the
/// reply.
void NetWorkProtocol::takeBuffer(ClientLink *link)
{
    QByteArray &buffer = link->buffer;
    if (buffer.size() < minimumBytes) {
        LOG_WARNING(QStringLiteral("read buffer error %1").arg(buffer.size()));
        return;
    }
    if (buffer.startsWith(blockStart)) {
        receiveBlock(link->socket, buffer);
        return;
    }
    if (buffer.size() < minimumFrame) {
        LOG_WARNING(QStringLiteral("socket  buffer error "));
        return;
    }
    if (isJson(buffer) && buffer.size() < headSize + qint64(word(buffer, lengthAt)))
        return;
    QByteArray frame;
    frame.swap(buffer);
    RecvPeloraPro(link->socket, frame);
}

int NetWorkProtocol::receiveBlock(QTcpSocket *socket, QByteArray &buffer)
{
    if (buffer.size() < blockHeadSize || buffer.size() < blockHeadSize + qint64(word(buffer, lengthAt)))
        return 1;
    const char *payload = buffer.constData() + blockHeadSize;
    const quint32 length = word(buffer, lengthAt);
    const quint32 sum = quint32(crc32(0, reinterpret_cast<const Bytef *>(payload), length));
    const bool good = sum == word(buffer, blockSumAt);
    if (good)
        m_upload.write(payload, length);
    writeAtOnce(socket, blockReply(buffer, good ? BlockWritten : BlockSumWrong));
    emptyBuffer(buffer);
    return good ? 0 : -1;
}

void NetWorkProtocol::RecvPeloraPro(QTcpSocket *socket, const QByteArray &frame)
{
    if (isJson(frame))
        runJson(socket, frame);
    else
        runBinary(socket, frame);
}

void NetWorkProtocol::runJson(QTcpSocket *socket, const QByteArray &frame)
{
    QByteArray text;
    QJsonParseError error;
    const QJsonObject request = parseText(frame, text, error).object();
    if (error.error != QJsonParseError::NoError) {
        sendJson(socket, {{"Title", "PrintQueue"}, {"Error", "parse error"}}, ownHead, jsonTail);
        return;
    }
    const RemoteCall call(request, text,
                          [this, socket, echo = startWord(frame)](const QByteArray &payload, ReplyHead head) {
                              sendFrame(socket, payload.constData(), payload.size(),
                                        head == ReplyHead::Own ? ownHead : echo, jsonTail);
                          });
    const QString title = call["Title"].toString();
    for (const RemoteCommand &command : m_commands) {
        if (title == QLatin1String(command.title))
            return command.run(call);
    }
    call.reply(request, ReplyHead::Echo);
    LOG_WARNING(QStringLiteral("pasue  pelora pro error：") + QString::fromUtf8(text.left(loggedText)));
}
