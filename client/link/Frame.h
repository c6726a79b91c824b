#pragma once
// The frames of the machine's link, to and fro.
//
//   JSON, binary   2 start word | 4 length of the payload | 1 command | 1 sub-command | payload
//   data block     A5 5A        | 4 length of the payload | 4 number | 4 CRC-32      | payload
//   block answer   5A A5        | 4 the number 6          | 4 number | 2 status
//
// Numbers are little-endian. Command and sub-command of a JSON frame are both FF.

#include <QByteArray>
#include <QJsonObject>

namespace frame
{
constexpr int headSize = 8;
constexpr int blockHeadSize = 14;
constexpr int blockAnswerSize = 12;
constexpr int announceAnswerSize = 10;
constexpr int finishAnswerSize = 8;
/// Nothing that the machine has to say is longer; a greater length is a stream that got out of step.
constexpr quint32 longestAnswer = 256u << 20;

QByteArray json(const QJsonObject &object);
QByteArray binary(quint8 command, quint8 subCommand, const QByteArray &payload = {});
QByteArray block(quint32 number, const QByteArray &payload);
/// The payload of an upload's announce: size, then the name with its closing zero byte.
QByteArray announcement(quint64 size, const QString &name);

quint32 lengthOf(const QByteArray &head);
bool isJson(const QByteArray &head);
} // namespace frame
