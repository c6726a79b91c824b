#include "engine/ServiceRuns.h"

#include "engine/AxisMoves.h"
#include "engine/HeadInk.h"
#include "engine/JobCodes.h"
#include "engine/XdmControl.h"
#include "links/BoardCommands.h"
#include "platform/Clock.h"
#include "platform/Log.h"

namespace
{
constexpr int approachSpeed = 400;
constexpr int stationSpeed = 300;
constexpr unsigned magnetSettleMs = 1000;
constexpr float zHomingRun = 12000;
constexpr float zTravel = 145000;
constexpr float zPurge = 80000;
constexpr unsigned pressDelayMs = 1000;

/// A stop of the operator is no fault.
template <typename Round> ServiceEnd repeat(const KeepGoing &keepGoing, Round round)
{
    ServiceEnd end;
    while (keepGoing && end.code == JobCode::done) {
        end.code = round(end.rounds);
        end.rounds += end.code == JobCode::done;
    }
    if (end.code == JobCode::stopped)
        end.code = JobCode::done;
    return end;
}

int homeX()
{
    return xMoveZero_Wait(true) == 0 ? JobCode::done : JobCode::xStuck;
}

int homeZAxis()
{
    return zMoveZero(true) == 0 ? JobCode::done : JobCode::zStuck;
}

int coupleStack()
{
    if (const int code = moveX(configuredPlace("PullInkStack")))
        return code;
    Sleep(magnetSettleMs);
    setElectricStatus(1);
    Sleep(magnetSettleMs);
    return moveX(configuredPlace("xPressInkPos"));
}

/// The stack is left where it was taken, at its station.
int returnStack()
{
    if (!isStackOnCarriage()) {
        setElectricStatus(0);
        return JobCode::inkStackFault;
    }
    const int code = moveX(configuredPlace("PullInkStack"));
    if (code == JobCode::done)
        setElectricStatus(0);
    return code;
}

int stationRound()
{
    if (const int code = homeX())
        return code;
    setXSpeed(stationSpeed);
    return inTurn(coupleStack, returnStack);
}

int zRound(int number)
{
    if (const int code = inTurn(homeZAxis, [] { return moveZ(zTravel); }))
        return code;
    LOG_WARNING(QStringLiteral("z test count=%1").arg(number + 1));
    return JobCode::done;
}

int purgeRound(const KeepGoing &keepGoing, int number)
{
    pressInk();
    Sleep(pressDelayMs);
    for (const quint8 head : pressHeadCodes) {
        pressHead(head);
        if (!holdForHeadInk([&keepGoing] { return !keepGoing; }))
            return JobCode::stopped;
    }
    LOG_WARNING(QStringLiteral("press ink count=%1").arg(number + 1));
    return JobCode::done;
}
} // namespace

bool isStationConfigured()
{
    return configuredPlace("PullInkStack") > 0 && configuredPlace("xPressInkPos") > 0;
}

int approachStation()
{
    if (const int error = xMoveZero_Wait(true))
        return error;
    setXSpeed(approachSpeed);
    return passInkStation();
}

bool releaseStack()
{
    setElectricStatus(0);
    return !hasStackStayed();
}

int settleZ()
{
    return homeZ(zHomingRun);
}

ServiceEnd runStation(const KeepGoing &keepGoing)
{
    return repeat(keepGoing, [](int) { return stationRound(); });
}

ServiceEnd runDots(const KeepGoing &keepGoing)
{
    if (const int code = xdmControl()->prepareDots())
        return {code, 0};
    return repeat(keepGoing, [](int number) {
        return inTurn(stationRound, [=] { return xdmControl()->printDots(number % 2 != 0); });
    });
}

ServiceEnd runZ(const KeepGoing &keepGoing)
{
    return repeat(keepGoing, zRound);
}

ServiceEnd runPurge(const KeepGoing &keepGoing)
{
    return repeat(keepGoing, [&keepGoing](int number) { return purgeRound(keepGoing, number); });
}

bool isAtPurgeHeight()
{
    return getZPos() == zPurge;
}

int moveToPurgeHeight()
{
    return inTurn(homeZAxis, [] { return moveZ(zPurge); });
}
