// The steps of a job before and after the printing itself.

#include "engine/JobCodes.h"
#include "engine/MachineServices.h"
#include "engine/PrintService.h"
#include "events/EventHandler.h"
#include "events/OperatorMessage.h"
#include "events/SendEmail.h"
#include "frame/JsonConfig.h"
#include "frame/ProgramVersion.h"
#include "frame/SqliteUtil.h"
#include "links/BoardCommands.h"
#include "platform/Clock.h"
#include "platform/Log.h"
#include "printdata/SliceToImage.h"

#include <QDateTime>

namespace
{
constexpr int levellerMinSpeed = 100;
constexpr unsigned pollMs = 5000; ///< a stop is seen within this time

enum TemperatureMode : quint8 { TemperaturePrinting = 1, TemperatureKeepWarm = 2 };

QString timeText()
{
    return QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm"));
}
} // namespace

void PrintService::beginJob()
{
    m_cleanCnt = 0;
    m_reprintCounter = 0;
    m_imagesSent = 0;
    resetPrintState(0);
    setState(QStringLiteral("StartTime"), timeText());
    const QString started = tr("打印开始");
    SendEmail(started, sliceToImage()->fileName() + QStringLiteral("  ") + started);
}

bool PrintService::isLevellerTurning(int *speed)
{
    *speed = getLevelSpeed();
    if (*speed < levellerMinSpeed) {
        Sleep(5000);
        *speed = getLevelSpeed();
    }
    return *speed >= levellerMinSpeed;
}

bool PrintService::startLeveller()
{
    const float full = sysConfig()->getFloat(QStringLiteral("LevelSpeed"));
    // Backwards first: a roller that sticks comes free.
    const struct {
        float speed;
        unsigned holdMs;
    } ramp[] = {{-full, 1000}, {0, 2000}, {full * 2 / 5, 1000}, {full, 5000}};
    for (const auto &step : ramp) {
        setLevelStatus(static_cast<int>(step.speed));
        Sleep(step.holdMs);
    }
    int speed = 0;
    if (isLevellerTurning(&speed))
        return true;
    showPrintMessage(JobCode::levellerNotStarted, EventHandler::eventMessage(JobCode::levellerNotStarted),
                     MessageIcon::critical, MessageButtons::close);
    return false;
}

/// Only closing the door ends this wait: no ink can be fed before, and nothing has been started yet.
void PrintService::waitInkDoorClosed()
{
    while (!isInkDoorClosed()) {
        showPrintMessage(JobCode::inkDoorOpen, EventHandler::eventMessage(JobCode::inkDoorOpen),
                         MessageIcon::critical, MessageButtons::close);
        Sleep(pollMs);
    }
}

void PrintService::markStarted(const QString &model)
{
    const QString start = printState().value(QLatin1String("StartTime")).toString();
    sqliteUtil()->ExecuteSqlQuery(
        QStringLiteral("update PrintQueue set StartTime=\"%1\"  where ModelName=\"%2\"")
            .arg(sqlText(start), sqlText(model)));
    jobServices().setTemperatureMode(TemperaturePrinting);
    sliceToImage()->resetHeadMass();
}

/// Models name the machine that they are prepared for.
bool PrintService::acceptMachineType(const QString &machineType)
{
    if (machineType == machineModel())
        return true;
    showPrintMessage(JobCode::otherMachine,
                     EventHandler::eventMessage(JobCode::otherMachine).arg(machineType, machineModel()),
                     MessageIcon::critical, MessageButtons::yesNo);
    return waitMessageForm() != 0;
}

int PrintService::heatUp()
{
    while (!jobServices().isTempReady()) {
        if (isStopped())
            return JobCode::stopped;
        showPrintMessage(JobCode::heating, EventHandler::eventMessage(JobCode::heating),
                         MessageIcon::information, MessageButtons::close);
        Sleep(pollMs);
    }
    clearPrintMessage();
    jobServices().setTemperatureMode(TemperaturePrinting);
    return JobCode::done;
}

int PrintService::checkConfiguration()
{
    const QJsonObject keys = sysConfig()->object();
    const bool complete =
        keys.contains(QLatin1String("ZStartPos")) && keys.contains(QLatin1String("ForwardStartPos"));
    return complete ? JobCode::done : JobCode::configurationLost;
}

void PrintService::showResult(int code)
{
    switch (code) {
    case JobCode::inkStackFault:
    case JobCode::configurationLost:
    case JobCode::xStuck:
    case JobCode::yStuck:
    case JobCode::zStuck:
        showPrintMessage(code, EventHandler::eventMessage(code), MessageIcon::critical,
                         MessageButtons::close);
        return;
    case JobCode::stopped:
        showPrintMessage(code, EventHandler::eventMessage(code), MessageIcon::warning, MessageButtons::close);
        break;
    }
    LOG_WARNING(QStringLiteral("printModel exit code=%1").arg(code));
}

void PrintService::standBy()
{
    jobServices().setTemperatureMode(TemperatureKeepWarm);
    setFanStatus(0, 0, 0, 0);
    setTopFan(1, 0xAA, 0xAA, 0xFF);
    setLevelStatus(0);
    ctlFrontDoor(0);
}

void PrintService::finish(int code)
{
    setState(QStringLiteral("EndTime"), timeText());
    PrintRecord(code);
    waitXStop();
    xMoveZero(true);
    emit stopPrintSignals();
}
