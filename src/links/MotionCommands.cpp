#include "links/BoardCall.h"
#include "links/BoardCommands.h"

#include "frame/RotatingLog.h"
#include "platform/Clock.h"
#include "platform/Log.h"

#include <atomic>

namespace
{

enum MotionCode : quint8 {
    codeYMovePos = 0x60,
    codeYMoveZero = 0x62,
    codeZMoveZero = 0x63,
    codeZMovePos = 0x65,
    codeAxesMoving = 0x70,
    codePlatform = 0x71,
    codeStackSensor = 0x72,
    codeYHomed = 0x80, // closes Y's homing
    codeGetYPos = 0x81,
    codeGetXPos = 0x82,
    codeXStartMove = 0x83,
    codeGetZPos = 0x84,
    codeXMoveZero = 0x85,
    codeXMovePos = 0x86,
    codeSetStack = 0x87,
    codeSetXSpeed = 0x8E,
    codeSetLevelSpeed = 0x8F,
    codeGetLevelSpeed = 0x90,
};

constexpr qint32 xHomingSpeed = 400;
constexpr int queryFailed = 6; // reads as still moving
constexpr int notAtRest = 1;
constexpr int moveFailed = 6;
constexpr int xMoveFailed = 3;
constexpr unsigned pollMs = 30;
constexpr unsigned latchMs = 20; // the board answers a position query with what the one before latched

struct AxisWait {
    int (*moving)();
    unsigned confirmMs;
    int limit;        // first reads that may find it moving
    const char *text; // of the log line on time-out
    int timeout;
};

// Written by one thread, read by another.
std::atomic<float> lastYTarget{0.0F};
std::atomic<float> lastZ{0.0F};

bool atRestTwice(const AxisWait &axis)
{
    Sleep(axis.confirmMs);
    return axis.moving() == 0;
}

int waitForStop(const AxisWait &axis, const LogOrigin &origin = LogOrigin::current())
{
    for (int movingReads = 0;; Sleep(pollMs)) {
        const int state = axis.moving();
        if (state == 0) {
            if (atRestTwice(axis))
                return 0;
        } else if (++movingReads > axis.limit) {
            logFor(origin,
                   QString::fromLatin1(axis.text).replace(QLatin1String("%1"), QString::number(state)));
            return axis.timeout;
        }
    }
}

bool sendMotion(quint8 code, const LogOrigin &origin = LogOrigin::current())
{
    return sendOnly(canMessage(boardMotion, code), origin);
}

bool sendMotionValue(quint8 code, qint32 value, const LogOrigin &origin = LogOrigin::current())
{
    return sendOnly(valueMessage(boardMotion, code, value), origin);
}

qint32 readTwice(quint8 code)
{
    CanMsg first = canMessage(boardMotion, code);
    sendCommand(first, &first);
    Sleep(latchMs);
    CanMsg second = canMessage(boardMotion, code);
    sendCommand(second, &second);
    return value32(second);
}

int moveZ(float position, bool wait, const LogOrigin &origin = LogOrigin::current())
{
    if (yzIsStop() != 0) {
        logFor(origin, QStringLiteral("z is not stop!\r\n"));
        return notAtRest;
    }
    if (position == 0.0F)
        return 0;
    if (!sendMotionValue(codeZMovePos, truncated(position), origin))
        return moveFailed;
    return wait ? waitYzStop() : 0;
}

} // namespace

int xIsStop()
{
    return queryByte(boardMotion, codeAxesMoving, 3, queryFailed);
}

int yzIsStop()
{
    return queryByte(boardMotion, codeAxesMoving, 1, queryFailed);
}

int waitXStop()
{
    return waitForStop({xIsStop, 20, 6000, "x is not stop %1\n", xStopTimeout});
}

int waitYzStop()
{
    return waitForStop({yzIsStop, 30, 10000, "wait yz zistop timeout\r\n", yzStopTimeout});
}

void setXSpeed(qint32 speed)
{
    sendMotionValue(codeSetXSpeed, speed);
}

bool xMovePos(qint32 position, bool wait)
{
    return sendMotionValue(codeXMovePos, position) && wait && waitXStop() != 0;
}

int xMovePos_Wait(quint32 position, bool wait)
{
    if (!sendMotionValue(codeXMovePos, qint32(position)))
        return xMoveFailed;
    return wait ? waitXStop() : 0;
}

int xMoveZero(bool wait)
{
    setXSpeed(xHomingSpeed);
    if (!sendMotion(codeXMoveZero))
        return 0;
    return wait ? waitXStop() : 1;
}

int xMoveZero_Wait(bool wait)
{
    setXSpeed(xHomingSpeed);
    if (!sendMotion(codeXMoveZero))
        return xMoveFailed;
    return wait ? waitXStop() : 0;
}

void xStartMove()
{
    sendMotion(codeXStartMove);
}

qint32 getXPos()
{
    return readTwice(codeGetXPos);
}

int yMovePos(float position, bool wait)
{
    lastYTarget = position;
    if (!sendMotionValue(codeYMovePos, truncated(position)))
        return moveFailed;
    return wait ? waitYzStop() : 0;
}

int yMoveZero()
{
    if (!sendMotion(codeYMoveZero))
        return moveFailed;
    waitYzStop(); // the homing is closed also when it took too long
    return sendMotion(codeYHomed) ? 0 : moveFailed;
}

qint32 getYPos(bool compare)
{
    const qint32 position = readTwice(codeGetYPos);
    const float target = lastYTarget;
    if (compare && double(position) != double(target))
        ydataLog().writeLine(QStringLiteral("%1,%2\n").arg(position).arg(double(target)));
    return position;
}

int zMovePos_Wait(float position, bool wait)
{
    return moveZ(position, wait);
}

bool zMovePos(float position, bool wait)
{
    const int result = moveZ(position, wait);
    return result == notAtRest || result == yzStopTimeout;
}

int zMoveZero(bool wait)
{
    if (!sendMotion(codeZMoveZero))
        return moveFailed;
    lastZ = 0.0F;
    if (wait)
        return waitYzStop();
    LOG_WARNING(QStringLiteral("move z zero false"));
    return 0;
}

float getZPos()
{
    CanMsg message = canMessage(boardMotion, codeGetZPos);
    if (send(message) == SendOk && message.data[0] == codeGetZPos)
        return float(value32(message));
    return lastZ;
}

int isPlatformReady()
{
    CanMsg message = canMessage(boardMotion, codePlatform);
    return send(message) == SendOk ? message.data[2] & message.data[3] : 0;
}

int checkElectricStatus()
{
    constexpr int unknown = 2;
    CanMsg message = canMessage(boardMotion, codeStackSensor);
    return sendTraced(message) == SendOk ? message.data[2] : unknown;
}

void setElectricStatus(quint8 state)
{
    CanMsg message = byteMessage(boardMotion, codeSetStack, 1, {state});
    sendTraced(message);
}

void setLevelStatus(qint32 speed)
{
    CanMsg message = valueMessage(boardMotion, codeSetLevelSpeed, speed);
    sendTraced(message);
}

qint32 getLevelSpeed()
{
    return readTwice(codeGetLevelSpeed);
}
