#include "links/BoardCall.h"
#include "links/BoardCommands.h"

#include "frame/Singleton.h"
#include "platform/Mutex.h"

#include <QtEndian>

#include <iterator>

namespace
{

enum AirCode : quint8 {
    codeInkDoor = 0x33,
    codeNegativePressures = 0x34,
    codeStackTemp = 0x40,
    codeTopFan = 0x41,
    codeFrontDoor = 0x42,
    codeRgb = 0x43,
    codePressInk = 0x6A,
};

constexpr quint8 pressAll = 0x3F; // the six bits that the board presses by

struct TopFanRecord {
    Mutex mutex; // the print thread and the service thread set it; held over the send, so that the last
                 // record is also the board's last
    CanMsg message PELORA_GUARDED_BY(mutex) = canMessage(boardAir, codeTopFan);
};

} // namespace

bool isInkDoorClosed()
{
    return queryByte(boardAir, codeInkDoor, 2, 0) != 0;
}

void ctlFrontDoor(quint8 state)
{
    CanMsg message = byteMessage(boardAir, codeFrontDoor, 4, {state});
    sendTraced(message, QStringLiteral("ctlFrontDoor error\n"));
}

int setTopFan(quint8 a, quint8 b, quint8 c, quint8 d, quint8 e)
{
    TopFanRecord *record = singleton<TopFanRecord>();
    MutexLock lock(record->mutex);
    const quint8 values[] = {a, b, c, d, e};
    for (size_t i = 0; i < std::size(values); ++i)
        if (values[i] != 0)
            record->message.data[2 + i] = values[i];
    CanMsg message = record->message;
    return send(message);
}

void setRGB(quint8 code)
{
    sendOnly(byteMessage(boardAir, codeRgb, 2, {code}));
}

void setStackTemp(quint8 value)
{
    sendOnly(byteMessage(boardAir, codeStackTemp, 2, {value, value}));
}

void pressInk()
{
    sendOnly(byteMessage(boardAir, codePressInk, 2, {pressAll}));
}

void pressOneHd(quint8 command)
{
    sendOnly(canMessage(boardAir, command));
}

std::array<qint16, 3> negativePressures()
{
    std::array<qint16, 3> pressures = {};
    CanMsg message = canMessage(boardAir, codeNegativePressures);
    if (send(message) == SendOk) {
        for (size_t head = 0; head < pressures.size(); ++head)
            pressures[head] = qFromLittleEndian<qint16>(message.data + 2 + 2 * head);
    }
    return pressures;
}
