#include "material/BackgroundService.h"

#include "events/EventHandler.h"
#include "events/OperatorMessage.h"
#include "frame/JsonConfig.h"
#include "frame/PrintStatus.h"
#include "frame/RotatingLog.h"
#include "frame/Singleton.h"
#include "links/BoardCommands.h"
#include "links/Usb2Can.h"
#include "material/AirSample.h"
#include "material/BoardParameters.h"
#include "material/HeadBoardSetup.h"
#include "material/TempCtl.h"
#include "platform/Clock.h"
#include "platform/Log.h"
#include "platform/ThreadName.h"

#include <thread>

namespace
{
constexpr int bridgePort = 16;
constexpr int bridgeBaud = 115200;
constexpr unsigned passMs = 500;

constexpr quint32 eventNone = 0;
constexpr quint32 eventHeadLevel = 0x01;
constexpr quint32 eventBus = 0x02;
constexpr quint32 eventPort = 0x18;
constexpr quint32 eventStrFeed = 0xffff04;
constexpr quint32 eventSupFeed = 0xffff05;

// Encoder counts per inch: one encoder counts micrometres and homes far from its zero, the other is a coarse
// strip whose position at the home switch stays below the limit.
constexpr float fineResolution = 25400.0f;
constexpr float coarseResolution = 1200.0f;
constexpr int coarseHomeLimit = 10000;

constexpr double lowLevelMargin = 20000.0; ///< raw units below full at which a tank counts as low

// A head whose level cannot be read is told at once and then once a minute, not with each of the 240 passes
// that the two ink services make in that time: the message would cover the screen for good and fill the event
// log.
constexpr unsigned passesPerLevelAlarm = 240;
} // namespace

BackgroundService *backgroundService()
{
    return singleton<BackgroundService>();
}

BackgroundService::BackgroundService()
{
    setObjectName(QStringLiteral("BackgroundService"));
    setMachineServices(this);
}

void BackgroundService::run()
{
    startUp();
    startThread("supInkService", &BackgroundService::inkServicePass);
    startThread("strInkService", &BackgroundService::inkServicePass);
    startThread("doorWatch", &BackgroundService::doorWatchPass);
    for (;;) {
        supervisionPass();
        Sleep(passMs);
    }
}

// Detached, since the object is never destroyed. A thread that cannot be started ends the process: the
// exception has no handler.
void BackgroundService::startThread(const char *name, void (BackgroundService::*pass)())
{
    std::thread([this, name, pass] {
        setThreadName(name);
        for (;;) {
            (this->*pass)();
            Sleep(passMs);
        }
    }).detach();
}

void BackgroundService::startUp()
{
    openLinks();
    initEncoderResolution();
    sendParameters();
    setUpHeads();
    testCan();
    sendStartState();
    tempCtl()->setMode(0);
    setXSpeed(qint32(sysConfig()->getFloat(QStringLiteral("XMoveSpeed"))));
}

void BackgroundService::openLinks()
{
    if (!usb2Can()->OpenPort(bridgePort, bridgeBaud))
        showAlarm(eventPort, EventHandler::eventMessage(eventPort).arg(bridgePort));
}

void BackgroundService::initEncoderResolution()
{
    m_fEncoderResolution = fineResolution;
    if (xMoveZero(true) == 0 && getXPos() < coarseHomeLimit)
        m_fEncoderResolution = coarseResolution;
    LOG_WARNING(QStringLiteral("m_fEncoderResolution=%1").arg(double(m_fEncoderResolution)));
}

void BackgroundService::sendParameters()
{
    setInkFeedingPara(inkConfig()->object());
    setAirPressurePara(airConfig()->object());
}

void BackgroundService::setUpHeads()
{
    const HeadBoardReport report = setUpHeadBoards();
    for (const QString &line : report.wrongBoards)
        showAlarm(eventNone, line);
    if (!report.fault.isEmpty())
        showAlarm(eventNone, report.fault);
}

void BackgroundService::testCan()
{
    const QString failed = m_busTest.testCan();
    if (!failed.isEmpty())
        showAlarm(eventBus, EventHandler::eventMessage(eventBus).arg(failed));
}

void BackgroundService::sendStartState()
{
    setRGB(0xF2);
    setLevelStatus(0);
    setTopFan(1, 0xAA, 0xAA, 0xFF, 0xFF);
    setStackTemp(1);
    ctlFrontDoor(0);
}

void BackgroundService::supervisionPass()
{
    refreshNozzleFull();
    testCan();
    sampleAir();
    tempCtl()->periodic();
}

void BackgroundService::refreshNozzleFull()
{
    const QJsonObject ink = inkConfig()->object();
    const auto full = ink.constFind(QLatin1String("NozzleFullValue"));
    if (full == ink.constEnd())
        return;
    MutexLock lock(m_fullMutex);
    m_nozzleFull = full->toObject();
}

void BackgroundService::sampleAir()
{
    if (printStatus() == PrintStatusPrinting)
        airLog().writeLine(airSampleLine());
}

void BackgroundService::inkServicePass()
{
    for (int head = 1; head <= InkLevels::heads; ++head) {
        std::atomic<unsigned> &failures = m_levelFailures[size_t(head - 1)];
        if (inkLevels().read(head))
            failures = 0;
        else if (failures++ % passesPerLevelAlarm == 0)
            showAlarm(eventHeadLevel, EventHandler::eventMessage(eventHeadLevel).arg(head));
    }
}

void BackgroundService::doorWatchPass()
{
    const bool closed = isInkDoorClosed();
    if (closed && m_inkDoorClosed == 0) {
        EventHandler::clearEvent(eventStrFeed);
        EventHandler::clearEvent(eventSupFeed);
    }
    m_inkDoorClosed = closed;
}

float BackgroundService::encoderResolution() const
{
    return m_fEncoderResolution;
}

Bottles BackgroundService::cards() const
{
    Bottles bottles;
    bottles.strUse = m_strUse;
    bottles.supUse = m_supUse;
    MutexLock lock(m_mutex);
    bottles.cards = m_cards;
    return bottles;
}

void BackgroundService::setBottleInUse(quint8 strUse, quint8 supUse)
{
    if ((strUse != 4 && strUse != 5) || (supUse != 2 && supUse != 3)) {
        LOG_WARNING(QStringLiteral("no such bottles %1 %2").arg(strUse).arg(supUse));
        return;
    }
    m_strUse = strUse;
    m_supUse = supUse;
}

QString BackgroundService::structureBottleSerial() const
{
    const Bottles bottles = cards();
    return QString::fromLatin1(bottles.cards[bottles.strUse].sn);
}

QString BackgroundService::supportBottleSerial() const
{
    const Bottles bottles = cards();
    return QString::fromLatin1(bottles.cards[bottles.supUse].sn);
}

bool BackgroundService::checkHeadInkLevels()
{
    QJsonObject full;
    {
        MutexLock lock(m_fullMutex);
        full = m_nozzleFull;
    }
    bool low = false;
    for (int tank = 0; tank < InkLevels::tanks; ++tank) {
        const double limit = full.value(InkLevels::key(tank)).toDouble() - lowLevelMargin;
        low = low || inkLevels().level(tank) < limit;
    }
    if (m_inkLow.exchange(low) != low)
        LOG_WARNING(QStringLiteral(" hd:%1").arg(inkLevels().text()));
    return low;
}

void BackgroundService::getHeadInkLevels(QJsonObject &levels) const
{
    inkLevels().fill(levels);
}

bool BackgroundService::isTempReady() const
{
    return tempCtl()->isTempReady();
}

void BackgroundService::setTemperatureMode(quint8 mode)
{
    tempCtl()->setMode(mode);
}

void BackgroundService::showMessage(quint32 id, const QString &prompt, int icon, int btn)
{
    emit MessageFormShowSig(messageTitle(id), prompt, icon, btn, objectName());
}

// Waits for the form to show it, never for the operator.
void BackgroundService::showAlarm(quint32 id, const QString &prompt)
{
    showMessage(id, prompt, MessageIcon::critical, MessageButtons::close);
}
