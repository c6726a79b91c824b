// What brings the machine to known positions before a print, and the boards' dot clock.

#include "engine/AxisMoves.h"
#include "engine/HibLibrary.h"
#include "engine/JobCodes.h"
#include "engine/MachineServices.h"
#include "engine/PrintService.h"
#include "links/BoardCommands.h"
#include "platform/Log.h"

namespace
{
constexpr int boardCount = 3;
constexpr int nozzlesPerBoard = 880;
/// Page of boards that wait for a job.
constexpr int idlePageWidth = 2100;
/// Mode word of the boards' dot clock.
constexpr quint32 dotClockMode = 0x10001;
/// Z runs this far after homing and is homed again.
constexpr float zHomingRun = 10000.0f;

int checkInkStackParked()
{
    if (passInkStation() != 0)
        return JobCode::xStuck;
    if (!hasStackStayed())
        return JobCode::done;
    setElectricStatus(0);
    return JobCode::inkStackFault;
}
} // namespace

HibDotClock PrintService::dotClockRecord(int count, float frequency)
{
    m_dotClock.boardCount = static_cast<quint32>(count);
    m_dotClock.frequencyHz = frequency;
    m_dotClock.enabled = 1;
    m_dotClock.encoderDivider = jobServices().encoderResolution() * 0.25f;
    m_dotClock.dpi = static_cast<qint32>(m_packedImage.dpi);
    m_dotClock.mode = dotClockMode;
    return m_dotClock;
}

bool PrintService::setDotClock(int count, float frequency)
{
    for (int board = 1; board <= boardCount; ++board)
        lockHibAutofireStop(board);
    for (int nozzle = 1; nozzle <= nozzlesPerBoard; ++nozzle)
        for (int board = 1; board <= boardCount; ++board)
            lockHibSetAutofireMask(board, nozzle, 0);

    HibDotClock clock;
    {
        MutexLock lock(m_recordMutex);
        clock = dotClockRecord(count, frequency);
    }
    if (lockHibSetupAllDotclocks(&clock) != 0) {
        LOG_WARNING(QStringLiteral("hibSetupAllDotclocks Errror\r\n"));
        return false;
    }
    for (int board = 1; board <= boardCount; ++board)
        lockHibConfigPage(board, 1.0f, 1.0f, idlePageWidth, 1);
    return true;
}

int PrintService::homeCarriage()
{
    xMoveZero(true);
    if (waitXStop() != 0)
        return JobCode::xStuck;
    setDotClock(boardCount, 0.0f);
    lockHibSetEncoderPos(1, 1);
    return JobCode::done;
}

int PrintService::prepareMachine()
{
    if (const int code = inTurn([this] { return homeCarriage(); }, checkInkStackParked))
        return code;
    xStartMove();
    if (waitXStop() != 0)
        return JobCode::xStuck;
    if (yMoveZero() != 0)
        return JobCode::yStuck;
    return homeZ(zHomingRun);
}
