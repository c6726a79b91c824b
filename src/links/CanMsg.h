#pragma once
// The 16-byte record of every board message, in both directions.

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#pragma pack(push, 1)
struct CanMsg {
    quint32 id = 0;      ///< board number; SendMsg adds 0x40 on the way out
    quint8 data[8] = {}; ///< data[0] is the command code
    quint8 dlc = 0;      ///< 8 from every caller
    quint8 channel = 0;  ///< 0: bus, 0xFF: the bridge itself
    quint8 reserved0 = 0;
    quint8 reserved1 = 0;
};
#pragma pack(pop)
static_assert(sizeof(CanMsg) == 16, "wire record");

/// A message to `board` with a command code; all else 0.
CanMsg canMessage(quint32 board, quint8 command);
/// Little-endian 32-bit value in data[4..7].
void setValue32(CanMsg &message, qint32 value);
qint32 value32(const CanMsg &message);
/// Little-endian 16-bit value in data[at..at+1].
void setValue16(CanMsg &message, int at, quint16 value);
quint16 value16(const CanMsg &message, int at);
/// First 12 bytes of the request and the 8 data bytes of the answer in hexadecimal, "-" between bytes.
QString hexText(const CanMsg &request, const CanMsg &answer);
