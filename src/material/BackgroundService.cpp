#include "material/BackgroundService.h"

#include "events/EventHandler.h"
#include "events/OperatorMessage.h"
#include "frame/JsonConfig.h"
#include "frame/PrintStatus.h"
#include "frame/RotatingLog.h"
#include "frame/Singleton.h"
#include "links/BoardCommands.h"
#include "links/FirmwareUpdate.h"
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
constexpr int cardPort = 5;
constexpr int bridgePort = 16;
constexpr int bridgeBaud = 115200;
constexpr unsigned passMs = 500;

constexpr quint32 eventNone = 0;
constexpr quint32 eventBus = 0x02;
constexpr quint32 eventPort = 0x18;

// Encoder counts per inch: one encoder counts micrometres and homes far from its zero, the other is a coarse
// strip whose position at the home switch stays below the limit.
constexpr float fineResolution = 25400.0f;
constexpr float coarseResolution = 1200.0f;
constexpr int coarseHomeLimit = 10000;
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
    if (!startUp())
        return;
    startThread("supInkService", &BackgroundService::supInkService);
    startThread("strInkService", &BackgroundService::strInkService);
    startThread("doorWatch", &BackgroundService::doorWatch);
    for (;;) {
        supervisionPass();
        Sleep(passMs);
    }
}

// Detached, since the object is never destroyed. A thread that cannot be started ends the process: the
// exception has no handler.
void BackgroundService::startThread(const char *name, void (BackgroundService::*body)())
{
    std::thread([this, name, body] {
        setThreadName(name);
        (this->*body)();
    }).detach();
}

void BackgroundService::strInkService()
{
    inkService(StructureInk);
}

void BackgroundService::supInkService()
{
    inkService(SupportInk);
}

void BackgroundService::inkService(InkPath ink)
{
    for (;;) {
        if (inkServicePass(ink))
            Sleep(passMs);
    }
}

void BackgroundService::doorWatch()
{
    for (;;) {
        doorWatchPass();
        Sleep(passMs);
    }
}

bool BackgroundService::startUp()
{
    openLinks();
    if (updateFirmware())
        return false;
    initEncoderResolution();
    sendParameters();
    setUpHeads();
    testCan();
    sendStartState();
    tempCtl()->setMode(0);
    setXSpeed(qint32(sysConfig()->getFloat(QStringLiteral("XMoveSpeed"))));
    return true;
}

// One alarm, and the bridge counts more: without cards the machine still moves and heats.
void BackgroundService::openLinks()
{
    int failedPort = m_bottles.openPort(cardPort) ? 0 : cardPort;
    if (!usb2Can()->OpenPort(bridgePort, bridgeBaud))
        failedPort = bridgePort;
    if (failedPort != 0)
        showAlarm(m_show, eventPort, EventHandler::eventMessage(eventPort).arg(failedPort));
}

bool BackgroundService::updateFirmware()
{
    return updateStm32(
        [this](const QString &text, int icon, int btn) { m_show(eventNone, text, icon, btn); });
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
        showAlarm(m_show, eventNone, line);
    if (!report.fault.isEmpty())
        showAlarm(m_show, eventNone, report.fault);
}

void BackgroundService::testCan()
{
    const QString failed = m_busTest.testCan();
    if (!failed.isEmpty())
        showAlarm(m_show, eventBus, EventHandler::eventMessage(eventBus).arg(failed));
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
    m_statusMail.pass();
    testCan();
    sampleAir();
    tempCtl()->periodic();
}

void BackgroundService::refreshNozzleFull()
{
    const QJsonObject ink = inkConfig()->object();
    const auto full = ink.constFind(QLatin1String("NozzleFullValue"));
    if (full != ink.constEnd())
        inkLevels().setFull(full->toObject());
}

void BackgroundService::sampleAir()
{
    if (printStatus() == PrintStatusPrinting)
        airLog().writeLine(airSampleLine());
}

RestWeights BackgroundService::restWeights() const
{
    const Bottles bottles = cards();
    const auto rest = [&bottles](quint8 slot) { return bottles.cards[slot].rest_weight; };
    const BottlePair support = bottlePair(SupportInk), structure = bottlePair(StructureInk);
    return {rest(support.first), rest(support.second), rest(structure.first), rest(structure.second)};
}

void BackgroundService::doorWatchPass()
{
    const bool closed = isInkDoorClosed();
    if (closed && m_inkDoorClosed == 0) {
        InkFeeding::forgetFailures();
        m_bottles.updateCard();
    }
    m_inkDoorClosed = closed;
}

float BackgroundService::encoderResolution() const
{
    return m_fEncoderResolution;
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
    return inkLevels().checkHeadInkLevels();
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
