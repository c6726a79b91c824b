#pragma once
// Frames of the remote link: bytes in, requests out, replies back. Strictly request and reply; one frame at a
// time.

#include "platform/Mutex.h"
#include "remote/RemoteCommands.h"

#include <QByteArray>
#include <QFile>
#include <QString>

class QTcpSocket;
class QJsonObject;

/// The one client.
struct ClientLink {
    QTcpSocket *socket = nullptr;
    QByteArray buffer; ///< received and not yet consumed
};

/// Link thread, unless said otherwise.
class NetWorkProtocol
{
public:
    static constexpr quint16 ownHead = 0x5AA5;
    static constexpr quint16 jsonTail = 0xFFFF;

    /// `commands` outlives the protocol.
    explicit NetWorkProtocol(const QVector<RemoteCommand> &commands = remoteCommands());
    virtual ~NetWorkProtocol();

    /// Head and tail high byte first, length little-endian, then the data.
    static void buildFrame(QByteArray &out, const char *data, int length, quint16 head, quint16 tail);
    /// Bytes written, 0 when there is no client that could be written to. Any thread.
    int sendFrame(QTcpSocket *socket, const char *data, int length, quint16 head, quint16 tail);
    int sendJson(QTcpSocket *socket, const QJsonObject &object, quint16 head, quint16 tail);

    /// Takes what the client has sent.
    void readData(ClientLink *link);
    /// A data block of an upload: 0 written, 1 more bytes are needed, -1 wrong checksum.
    int receiveBlock(QTcpSocket *socket, QByteArray &buffer);
    /// Works one frame, JSON or binary, at the front of `frame`.
    void RecvPeloraPro(QTcpSocket *socket, const QByteArray &frame);

protected:
    /// What readData does with bytes, wherever they come from.
    void takeBytes(ClientLink *link, const QByteArray &bytes);

    ClientLink *m_client;
};
