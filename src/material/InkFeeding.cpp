#include "material/InkFeeding.h"

#include "events/EventHandler.h"
#include "frame/JsonConfig.h"
#include "links/BoardCommands.h"
#include "links/Usb2Can.h"
#include "material/TempCtl.h"
#include "platform/Log.h"

namespace
{
constexpr quint8 codeDemand = 0x36;
constexpr quint8 codeFeedResult = 0xFF;
constexpr quint32 eventHeadLevel = 0x01;

constexpr int valveAttempts = 2;      ///< a pass
constexpr quint8 failuresToAlarm = 8; ///< in a row
constexpr double feedKilograms = 0.065;
constexpr int lowestFedLevel = 101; ///< raw; a sensor that reads near zero must not open a valve

// A head whose level cannot be read is told at once and then once a minute, not with each of the 240 passes
// that the two ink services make in that time: the message would cover the screen for good and fill the event
// log.
constexpr unsigned passesPerLevelAlarm = 240;

enum FeedResult : quint8 { FeedDone = 0, FeedFailed = 1 }; // of the ink board; anything else is none of ours

QByteArray dataText(const CanMsg &message)
{
    return QByteArray(reinterpret_cast<const char *>(message.data), sizeof message.data).toHex('-');
}
} // namespace

/// What differs between the two waxes.
struct InkFeeding::Path {
    InkPath ink;
    int demandByte; ///< of the answer to codeDemand: 1 with the byte before it 0 asks for wax
    int resultByte; ///< of the answer to codeFeedResult
    quint32 failureEvent;
    bool (*valveFeed)(qint8 valve, bool wait);
    void (*nozzleFeed)(quint8 head);
    void (BottleAccount::*switchBottle)();
    int tankOfHead; ///< 0 the head's first tank, 1 its second
    const char *usageKey;
    const char *givingUp;
};

const InkFeeding::Path InkFeeding::paths[] = {
    {StructureInk, 4, 6, 0xffff04, strValveFeedingWax, strNozzleFeedingWax, &BottleAccount::switchStrBottle,
     1, "UsedStructMaterialWeight", "restore  making struct ink into valve"},
    {SupportInk, 2, 4, 0xffff05, supValveFeedingWax, supNozzleFeedingWax, &BottleAccount::switchSupBottle, 0,
     "UsedSupportMaterialWeight", "restore  making sup ink into valve"},
};

const InkFeeding::Path &InkFeeding::pathOf(InkPath ink)
{
    return paths[ink == paths[0].ink ? 0 : 1];
}

InkFeeding::InkFeeding(BottleAccount &bottles, const std::atomic<quint8> &inkDoorClosed, ServiceMessage show)
    : m_bottles(bottles), m_inkDoorClosed(inkDoorClosed), m_show(std::move(show))
{
}

void InkFeeding::forgetFailures()
{
    for (const Path &path : paths)
        EventHandler::clearEvent(path.failureEvent);
}

bool InkFeeding::pass(InkPath ink)
{
    const Path &path = pathOf(ink);
    readLevels();
    if (!mayFeed(path))
        return true;
    const CanMsg request = canMessage(boardInk, codeDemand);
    CanMsg answer;
    const int result = sendCommand(request, &answer);
    if (result != SendOk) {
        LOG_WARNING(hexText(request, answer));
        // A silent board has taken its two seconds; a board that is filtered, a closed port and a line that is
        // gone refuse at once.
        return result != SendNoAnswer;
    }
    if (answer.data[path.demandByte] == 1 && answer.data[path.demandByte - 1] == 0)
        feedValve(path, answer);
    else
        feedHeads(path);
    return true;
}

void InkFeeding::readLevels()
{
    for (int head = 1; head <= InkLevels::heads; ++head) {
        std::atomic<unsigned> &failures = m_levelFailures[size_t(head - 1)];
        if (inkLevels().read(head))
            failures = 0;
        else if (failures++ % passesPerLevelAlarm == 0)
            showAlarm(m_show, eventHeadLevel, EventHandler::eventMessage(eventHeadLevel).arg(head));
    }
}

bool InkFeeding::mayFeed(const Path &path) const
{
    const BottlePair pair = bottlePair(path.ink);
    return tempCtl()->isTempReady() && m_inkDoorClosed == 1 &&
           (m_bottles.restWeight(pair.first) != 0 || m_bottles.restWeight(pair.second) != 0);
}

// The result of the query for the outcome does not count: a board that is refused leaves the answer as it
// was, a silent one clears it, and the byte of either is taken.
void InkFeeding::feedValve(const Path &path, CanMsg answer)
{
    for (int attempt = 0; attempt < valveAttempts; ++attempt) {
        const quint8 slot = m_bottles.inUse(path.ink);
        path.valveFeed(qint8(slot - bottlePair(path.ink).first + 1), true);
        sendCommand(canMessage(boardInk, codeFeedResult), &answer);
        if (valveFeedingResult(path, slot, answer))
            return;
    }
}

// True when the feed is settled and no further attempt is due. The bottle that was drawn on is charged, also
// when the operator has chosen the other one meanwhile.
bool InkFeeding::valveFeedingResult(const Path &path, quint8 slot, const CanMsg &reply)
{
    const BottlePair pair = bottlePair(path.ink);
    LOG_WARNING(QStringLiteral("%1 rest %2,%3")
                    .arg(QString::fromLatin1(dataText(reply)))
                    .arg(m_bottles.restWeight(pair.first))
                    .arg(m_bottles.restWeight(pair.second)));
    const quint8 result = reply.data[path.resultByte];
    if (result == FeedFailed) {
        countFailure(path, slot);
        return false;
    }
    if (result == FeedDone) {
        m_bottles.handleRestWeight(slot, true);
        useInfoConfig()->addSync(QLatin1String(path.usageKey), feedKilograms);
        EventHandler::clearEvent(path.failureEvent);
    }
    return true;
}

// Every second failure in a row changes the bottle, the eighth calls the operator.
void InkFeeding::countFailure(const Path &path, quint8 slot)
{
    m_bottles.handleRestWeight(slot, false);
    const quint8 failures = EventHandler::setEvent(path.failureEvent, QString());
    if (failures % 2 == 0 || m_bottles.restWeight(m_bottles.inUse(path.ink)) == 0)
        (m_bottles.*path.switchBottle)();
    LOG_WARNING(QStringLiteral(" errCnt=%1").arg(failures));
    if (failures < failuresToAlarm)
        return;
    showAlarm(m_show, path.failureEvent, EventHandler::eventDetail(path.failureEvent));
    EventHandler::clearEvent(path.failureEvent);
    LOG_WARNING(QLatin1String(path.givingUp));
}

// At most one head in a pass, the first that wants wax.
void InkFeeding::feedHeads(const Path &path) const
{
    for (int head = 1; head <= InkLevels::heads; ++head) {
        if (feedingHdInk(path, head) == 0)
            return;
    }
}

// 0 when a feed was started, else 1.
int InkFeeding::feedingHdInk(const Path &path, int head) const
{
    const int firstTank = 2 * (head - 1);
    const QJsonObject full = inkLevels().full();
    if (!full.contains(InkLevels::key(firstTank + 1))) {
        LOG_WARNING(QStringLiteral("not found hd full value"));
        return 1;
    }
    if (m_inkDoorClosed != 1 || !tempCtl()->isTempReady())
        return 1;
    const int tank = firstTank + path.tankOfHead;
    const int level = inkLevels().level(tank);
    if (level < lowestFedLevel || level >= full.value(InkLevels::key(tank)).toDouble())
        return 1;
    path.nozzleFeed(quint8(head));
    return 0;
}
