#pragma once
// Frames of the remote link: bytes in, requests out, replies back. Strictly request and reply; one frame at a
// time. Lengths are little-endian:
//
//   frame       start word, u32 length n, command, sub-command, n bytes; command and sub-command 0xFF: JSON
//   data block  A5 5A, u32 length n, u32 block number, u32 CRC-32 of what follows, n bytes

#include "platform/Mutex.h"
#include "remote/RemoteCommands.h"
#include "remote/Upload.h"

#include <QByteArray>

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
    /// More than this is kept of no client.
    static constexpr int bufferLimit = 256 << 20;

    /// `commands` outlives the protocol.
    explicit NetWorkProtocol(const QVector<RemoteCommand> &commands = remoteCommands());
    virtual ~NetWorkProtocol();
    NetWorkProtocol(const NetWorkProtocol &) = delete;
    NetWorkProtocol &operator=(const NetWorkProtocol &) = delete;

    /// Head and tail high byte first, length little-endian, then the data.
    static void buildFrame(QByteArray &out, const char *data, int length, quint16 head, quint16 tail);
    /// Bytes written, 0 when there is no client that could be written to. Blocks for 30 s at most. Any
    /// thread.
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

private:
    friend class CTcpClient;
    struct BinaryCommand;

    bool makeRoom(ClientLink *link, qint64 size);
    void takeBuffer(ClientLink *link);
    void runJson(QTcpSocket *socket, const QByteArray &frame);
    int writeGuarded(QTcpSocket *socket, const QByteArray &bytes);
    /// Without the wait of writeGuarded: blocks follow each other fast.
    void writeAtOnce(QTcpSocket *socket, const QByteArray &bytes);

    // BinaryCommands.cpp
    void runBinary(QTcpSocket *socket, const QByteArray &frame);
    void announceUpload(QTcpSocket *socket, const QByteArray &frame);
    void finishUpload(QTcpSocket *socket, const QByteArray &frame);
    void sendBoardMessage(QTcpSocket *socket, const QByteArray &frame);
    void readProfile(QTcpSocket *socket, const QByteArray &frame);
    void writeProfile(QTcpSocket *socket, const QByteArray &frame);
    void replyProfile(QTcpSocket *socket, const QByteArray &frame, quint8 number);

    const QVector<RemoteCommand> &m_commands;
    Upload m_upload;
    Mutex m_sendMutex; // the link's replies against what another thread has to tell the client
};

/// Start word of a frame as sendFrame takes it; missing bytes read as 0.
quint16 startWord(const QByteArray &frame);
