// Wipes the heads: the carriage takes the ink stack along, ink is pressed through the heads, they are scraped
// on the stack, and the stack goes back to its place.

#include "engine/AxisMoves.h"
#include "engine/HibLibrary.h"
#include "engine/JobCodes.h"
#include "engine/PrintService.h"
#include "events/EventHandler.h"
#include "events/OperatorMessage.h"
#include "frame/JsonConfig.h"
#include "links/BoardCommands.h"
#include "platform/Clock.h"
#include "platform/Log.h"

#include <algorithm>
#include <iterator>

namespace
{
/// Bed height at which nothing stands in the way of carriage and stack.
constexpr float zSafe = 145000;
constexpr float yCleanUsual = 8000;
/// Length of a scrape when its end is not configured.
constexpr float scrapeLength = 30000;

constexpr quint8 cleaningStackTemp = 120;
constexpr int approachSpeed = 300;
constexpr int scrapeSpeed = 30;
constexpr int returnSpeed = 400;

constexpr int coupleTries = 2;
constexpr int uncoupleTries = 16;
/// Every so many cleanings of a job are deep, beginning with the first.
constexpr int deepEvery = 10;
constexpr unsigned deepContactMs = 60000;
constexpr int rampParts = 10;

/// Hold pressure at which a head neither drips nor draws air, in the air board's unit.
constexpr int holdPressure = -450;

constexpr int boards = 3;
constexpr int nozzlesPerBoard = 880;
constexpr float autofireHz = 5000;

/// A configured place, or what stands for a 0.
float placeOr(const char *key, float usual)
{
    const float value = configuredPlace(key);
    return value == 0 ? usual : value;
}

/// From here on any failure leaves the stack on the carriage; preparing the next job finds it.
int scrape()
{
    const float end = placeOr("XScrapEndPos", configuredPlace("xPressInkPos") - scrapeLength);
    return inTurn([=] { return moveX(end); }, [] { return moveZ(zSafe); });
}

int deepClean()
{
    const int pre = static_cast<int>(configuredPlace("zPreDaoMo"));
    const int contact = static_cast<int>(configuredPlace("zDaoMoPos"));
    int code = inTurn([] { return moveX(configuredPlace("xPreDaoMo")); }, [=] { return moveZ(pre); },
                      [] { return moveX(configuredPlace("xDaoMoPos")); });
    for (int part = 0; part <= rampParts && code == JobCode::done; ++part) {
        code = moveZ(contact + ((rampParts - part) * (pre - contact)) / rampParts);
        if (code == JobCode::done)
            Sleep(1000);
    }
    if (code == JobCode::done)
        code = moveZ(contact);
    if (code != JobCode::done)
        return code;
    Sleep(deepContactMs);
    return moveZ(pre);
}

int returnStack()
{
    for (int attempt = 0; attempt < uncoupleTries; ++attempt) {
        if (const int code = moveX(configuredPlace("PullInkStack")))
            return code;
        setElectricStatus(0);
        Sleep(5000);
        if (const int code = moveX(configuredPlace("xPreDaoMo")))
            return code;
        if (checkElectricStatus() == 0)
            break;
    }
    return JobCode::done;
}

int coupleStack()
{
    for (int attempt = 0; attempt < coupleTries; ++attempt) {
        if (const int code = inTurn(stopX, [] { return moveX(configuredPlace("PullInkStack")); }))
            return code;
        Sleep(1000);
        setElectricStatus(1);
        Sleep(1000);
        if (const int code = moveX(configuredPlace("xPressInkPos")))
            return code;
        if (isStackOnCarriage())
            break;
        Sleep(2000);
        if (isStackOnCarriage())
            break;
    }
    return JobCode::done; // who goes on looks at the sensor once more
}

void fireAllNozzles()
{
    for (int board = 1; board <= boards; ++board)
        for (int nozzle = 1; nozzle <= nozzlesPerBoard; ++nozzle)
            lockHibSetAutofireMask(board, nozzle, 0);
    for (int board = 1; board <= boards; ++board)
        lockHibAutofireStart(board, autofireHz, 0, 1, 0);
    Sleep(1000);
    for (int board = 1; board <= boards; ++board)
        lockHibAutofireStop(board);
}
} // namespace

int PrintService::pullInkStackBack()
{
    if (zMovePos(zSafe, true)) {
        LOG_WARNING(QStringLiteral("z move error \n"));
        return JobCode::zStuck;
    }
    if (const int code = moveX(configuredPlace("PullInkStack")))
        return code;
    setElectricStatus(0);
    return JobCode::done;
}

int PrintService::showStackFault()
{
    showPrintMessage(JobCode::inkStackFault, EventHandler::eventMessage(JobCode::inkStackFault),
                     MessageIcon::critical, MessageButtons::close);
    setElectricStatus(0);
    return JobCode::inkStackFault;
}

/// The stack goes back to its place, and the cleaning ends with the operator's stop.
int PrintService::stopCleaning()
{
    pullInkStackBack();
    return JobCode::stopped;
}

int PrintService::pressHeads()
{
    if (static_cast<int>(inkConfig()->getFloat(QStringLiteral("PressTime"))) <= 0)
        return JobCode::done;
    pressInk();
    Sleep(1000);
    for (int round = 0; round < 2; ++round) {
        for (const quint8 head : pressHeadCodes) {
            pressHead(head);
            if (!waitHeadInk())
                return stopCleaning();
        }
    }
    return JobCode::done;
}

/// A stop ends the wait, not the cleaning: the heads are left clean and the stack parked.
void PrintService::waitVacuum()
{
    for (;;) {
        const std::array<qint16, 3> pressures = negativePressures();
        const bool held = std::all_of(pressures.begin(), pressures.end(),
                                      [](qint16 pressure) { return pressure <= holdPressure; });
        if (isStopped() || held)
            break;
        showPrintMessage(JobCode::pressureRecovering,
                         EventHandler::eventMessage(JobCode::pressureRecovering)
                             .arg(pressures[0])
                             .arg(pressures[1])
                             .arg(pressures[2]),
                         MessageIcon::information, MessageButtons::close);
        Sleep(1000);
    }
    clearPrintMessage(MessageIcon::information);
}

int PrintService::approachStack()
{
    if (const int code = stopX())
        return code;
    LOG_WARNING(QStringLiteral("clean start"));
    setFanStatus(0, 0, 0, 0);
    setTopFan(1, 0xAA, 0xAA, 0xFF);
    setStackTemp(cleaningStackTemp);
    setXSpeed(approachSpeed);
    return inTurn([] { return moveZ(zSafe); }, [] { return moveY(placeOr("YCleanPos", yCleanUsual)); },
                  coupleStack);
}

int PrintService::pressOnStack()
{
    if (const int code = moveZ(configuredPlace("zPressScrapPos")))
        return code;
    if (!waitHeadInk())
        return stopCleaning();
    if (const int code = pressHeads())
        return code;
    waitVacuum();
    return JobCode::done;
}

int PrintService::wipeHeads(bool atStart)
{
    setXSpeed(scrapeSpeed);
    if (const int code = inTurn(
            scrape, [] { return moveX(configuredPlace("xPressInkPos")); },
            [] { return moveZ(configuredPlace("zPressScrapPos")); }))
        return code;
    setXSpeed(scrapeSpeed);
    for (int round = 0; atStart && round < 2; ++round) {
        fireAllNozzles();
        waitHeadInk(); // a stop is seen by the layer loop
        Sleep(500);
    }
    if (const int code = inTurn(scrape, stopX))
        return code;
    setXSpeed(returnSpeed);
    return JobCode::done;
}

int PrintService::cleanNozzle(bool atStart, int)
{
    if (const int code = approachStack())
        return code;
    if (!isStackOnCarriage()) {
        showStackFault();
        pullInkStackBack();
        return JobCode::inkStackFault;
    }
    if (const int code = pressOnStack())
        return code;
    if (const int code = wipeHeads(atStart))
        return code;
    LOG_WARNING(QStringLiteral("m_cleanCnt=%1").arg(m_cleanCnt));
    const bool deep = m_cleanCnt++ % deepEvery == 0 || atStart;
    if (deep) {
        if (const int code = deepClean())
            return code;
    }
    if (const int code = returnStack())
        return code;
    if (isStackOnCarriage())
        return showStackFault();
    if (atStart) {
        xMoveZero(true);
        if (const int code = stopX())
            return code;
    }
    setXSpeed(static_cast<int>(configuredPlace("XMoveSpeed")));
    return JobCode::done;
}
