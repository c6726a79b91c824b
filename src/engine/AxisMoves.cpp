#include "engine/AxisMoves.h"

#include "engine/Geometry.h"
#include "engine/JobCodes.h"
#include "engine/MachineServices.h"
#include "frame/JsonConfig.h"
#include "links/BoardCommands.h"
#include "platform/Clock.h"
#include "platform/Log.h"

namespace
{
constexpr quint8 stackOnCarriage = 1;
/// The carriage passes the ink stack between these two X, in micrometres.
constexpr float stationPassX[] = {690000.0f, 550000.0f};
constexpr unsigned pressGapMs = 500;
constexpr unsigned dropOffMs = 5000;

int xIsStuck()
{
    LOG_WARNING(QStringLiteral(" x is not stop\r\n"));
    return JobCode::xStuck;
}
} // namespace

float configuredPlace(const char *key)
{
    return sysConfig()->getFloat(QLatin1String(key));
}

int stopX()
{
    return waitXStop() == 0 ? JobCode::done : xIsStuck();
}

int moveX(float position)
{
    return xMovePos_Wait(static_cast<quint32>(static_cast<qint32>(position)), true) == 0 ? JobCode::done
                                                                                         : xIsStuck();
}

int moveY(float position)
{
    if (yMovePos(position, true) == 0)
        return JobCode::done;
    LOG_WARNING(QStringLiteral("y move error \n"));
    return JobCode::yStuck;
}

int moveZ(float position)
{
    if (zMovePos_Wait(position, true) == 0)
        return JobCode::done;
    LOG_WARNING(QStringLiteral("z move error \n"));
    return JobCode::zStuck;
}

int homeZ(float run)
{
    if (zMoveZero(true) != 0 || zMovePos(run, true) || zMoveZero(true) != 0)
        return JobCode::zStuck;
    return JobCode::done;
}

int passInkStation()
{
    for (const float x : stationPassX) {
        const int counts = encoderCounts(x, jobServices().encoderResolution());
        if (const int error = xMovePos_Wait(static_cast<quint32>(counts), true))
            return error;
    }
    return 0;
}

bool isStackOnCarriage()
{
    return checkElectricStatus() == stackOnCarriage;
}

bool hasStackStayed()
{
    return isStackOnCarriage() && isStackOnCarriage();
}

void pressHead(unsigned char code)
{
    pressOneHd(code);
    Sleep(pressGapMs);
    pressOneHd(code);
    Sleep(dropOffMs);
}
