// The commands that are no JSON: upload, one message to a board, temperature profiles. Bytes that a short
// frame lacks read as 0.

#include "links/Usb2Can.h"
#include "material/TempCtl.h"
#include "platform/Log.h"
#include "remote/NetWorkProtocol.h"

#include <QtEndian>

namespace
{
constexpr int commandAt = 6;
constexpr int payloadAt = 8;

enum Command : quint8 { CommandUpload = 2, CommandMachine = 0xAA };

// Announce: u64 size, then the name up to a zero byte or the end.
constexpr int fileNameAt = payloadAt + int(sizeof(quint64));

// Message to a board, and its answer: board, eight data bytes.
constexpr int messageSize = 1 + int(sizeof CanMsg::data);

// Profile: number, nine degrees of the heads, then from 20 on ten bytes a group: board, command, seven
// degrees, a spare byte.
constexpr int profileSize = 256;
constexpr int headsAt = 1;
constexpr int groupsAt = 20;
constexpr int groupSize = 10;
constexpr int degreesAt = 2;

quint8 byteAt(const QByteArray &frame, int at)
{
    return at < frame.size() ? quint8(frame.at(at)) : 0;
}

QByteArray payloadOf(const QByteArray &frame, int size)
{
    return frame.mid(payloadAt, size).leftJustified(size, '\0');
}

QByteArray encodeProfile(const TempProfile &profile)
{
    QByteArray record(profileSize, '\0');
    record[0] = char(profile.row);
    std::copy(profile.heads.begin(), profile.heads.end(), record.begin() + headsAt);
    char *at = record.data() + groupsAt;
    for (const TempProfile::Group &group : profile.groups) {
        at[0] = char(group.board);
        at[1] = char(group.command);
        std::copy(group.degrees.begin(), group.degrees.end(), at + degreesAt);
        at += groupSize;
    }
    return record;
}

TempProfile decodeProfile(const QByteArray &record)
{
    TempProfile profile;
    profile.row = quint8(record.at(0));
    std::copy_n(record.begin() + headsAt, profile.heads.size(), profile.heads.begin());
    const char *at = record.constData() + groupsAt;
    for (TempProfile::Group &group : profile.groups) {
        std::copy_n(at + degreesAt, group.degrees.size(), group.degrees.begin());
        at += groupSize;
    }
    return profile;
}
} // namespace

struct NetWorkProtocol::BinaryCommand {
    quint8 command;
    quint8 sub;
    void (NetWorkProtocol::*run)(QTcpSocket *socket, const QByteArray &frame);
};

/// An unknown sub-command of a known command is passed over.
void NetWorkProtocol::runBinary(QTcpSocket *socket, const QByteArray &frame)
{
    static const BinaryCommand table[] = {
        {CommandUpload, 0, &NetWorkProtocol::announceUpload},
        {CommandUpload, 1, &NetWorkProtocol::finishUpload},
        {CommandMachine, 1, &NetWorkProtocol::sendBoardMessage},
        {CommandMachine, 2, &NetWorkProtocol::readProfile},
        {CommandMachine, 3, &NetWorkProtocol::writeProfile},
    };
    // a frame that ends within the two command bytes has none
    const bool whole = frame.size() >= payloadAt;
    const quint8 command = whole ? byteAt(frame, commandAt) : 0;
    const quint8 sub = whole ? byteAt(frame, commandAt + 1) : 0;
    bool known = false;
    for (const BinaryCommand &row : table) {
        known = known || row.command == command;
        if (row.command == command && row.sub == sub)
            return (this->*row.run)(socket, frame);
    }
    if (!known)
        LOG_WARNING(QStringLiteral("parse pel ora pro error"));
}

void NetWorkProtocol::announceUpload(QTcpSocket *socket, const QByteArray &frame)
{
    const quint64 size = qFromLittleEndian<quint64>(payloadOf(frame, sizeof(quint64)).constData());
    const QByteArray rest = frame.mid(fileNameAt);
    const QString name =
        QString::fromUtf8(rest.constData(), int(qstrnlen(rest.constData(), uint(rest.size()))));
    const bool opened = m_upload.open(name, size);
    QByteArray reply = QByteArray::fromHex("5AA5 04000000 02 00 00"); // the length is the protocol's own
    writeGuarded(socket, reply.append(opened ? '\0' : '\1'));
}

void NetWorkProtocol::finishUpload(QTcpSocket *socket, const QByteArray &)
{
    m_upload.finish(); // the client learns of the outcome from the queue
    writeGuarded(socket, QByteArray::fromHex("5AA5 02000000 02 01"));
}

void NetWorkProtocol::sendBoardMessage(QTcpSocket *socket, const QByteArray &frame)
{
    const QByteArray bytes = payloadOf(frame, messageSize);
    CanMsg message;
    message.id = quint8(bytes.at(0));
    std::copy_n(bytes.begin() + 1, sizeof message.data, message.data);
    CanMsg answer;
    QByteArray reply(messageSize, '\0');
    if (sendCommand(message, &answer) == SendOk) {
        reply[0] = char(answer.id);
        std::copy_n(answer.data, sizeof answer.data, reply.begin() + 1);
    }
    sendFrame(socket, reply.constData(), reply.size(), ownHead, jsonTail);
}

void NetWorkProtocol::readProfile(QTcpSocket *socket, const QByteArray &frame)
{
    replyProfile(socket, frame, byteAt(frame, payloadAt));
}

/// The reply shows profile 0, whichever was written.
void NetWorkProtocol::writeProfile(QTcpSocket *socket, const QByteArray &frame)
{
    tempCtl()->setTable(decodeProfile(payloadOf(frame, profileSize)));
    replyProfile(socket, frame, 0);
}

void NetWorkProtocol::replyProfile(QTcpSocket *socket, const QByteArray &frame, quint8 number)
{
    TempProfile profile;
    profile.row = number;
    tempCtl()->getTable(profile);
    const QByteArray record = encodeProfile(profile);
    const quint16 tail = quint16(quint8(frame.at(commandAt)) << 8 | quint8(frame.at(commandAt + 1)));
    sendFrame(socket, record.constData(), record.size(), startWord(frame), tail);
}
