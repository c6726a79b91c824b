#include "material/BottleAccount.h"

#include "events/EventHandler.h"
#include "platform/Clock.h"
#include "platform/Log.h"

#include <cstring>

namespace
{
constexpr quint8 tagConfig = 1;
constexpr quint32 cardBaud = 9600;

constexpr quint32 eventNone = 0;
constexpr quint32 eventReading = 0x03;
constexpr quint32 eventWrongPlace = 0x04;
constexpr quint32 eventNotWritten = 0x08;

constexpr quint32 positions = 4;
constexpr unsigned beforeReadMs = 500;
constexpr unsigned beforeSecondReadMs = 1000;
constexpr int writeTries = 10;

// Grams. The reserve runs down gram by gram, so that a bottle is drawn empty without being drawn dry. A
// failed feed condemns a bottle within its reserve, and one that claims more than any bottle holds.
constexpr quint32 feedGrams = 65;
constexpr quint32 reserveGrams = 10;
constexpr quint32 mostGrams = 4600;

constexpr char waxPrefix[] = "MT";

const char *waxOf(quint32 position)
{
    return position <= 2 ? "MTS7205" : "MTJ7401";
}

// What does not call itself a wax, such as the blank record of an unreadable card, is in nobody's way.
bool isWrongPlace(const CardInfo &info, quint32 position)
{
    return std::strncmp(info.type, waxPrefix, sizeof waxPrefix - 1) == 0 &&
           std::strncmp(info.type, waxOf(position), sizeof info.type) != 0;
}

constexpr quint8 slotOf(quint32 position)
{
    return quint8(position + 1);
}

QString cardText(quint32 position, const CardInfo &info)
{
    return QStringLiteral("card[%1]=%2 %3/%4  ")
        .arg(QString::number(position), QString::fromLatin1(info.sn), QString::number(info.rest_weight),
             QString::number(info.weight));
}
} // namespace

quint32 restAfterFeed(quint32 rest, bool fed)
{
    if (!fed) {
        const quint32 less = rest > 0 ? rest - 1 : 0;
        return less > reserveGrams && less <= mostGrams ? less : 0;
    }
    if (rest >= feedGrams)
        return rest - feedGrams;
    if (rest > reserveGrams)
        return reserveGrams;
    return rest > 0 ? rest - 1 : 0;
}

BottleAccount::BottleAccount(ServiceMessage show, const std::atomic<quint8> &inkDoorClosed)
    : m_show(std::move(show)), m_inkDoorClosed(inkDoorClosed), m_card(tagConfig)
{
}

bool BottleAccount::openPort(int port)
{
    MutexLock lock(m_mutex);
    return m_card.OpenPort(QStringLiteral("COM%1").arg(port).toLatin1().constData(), cardBaud) == 0;
}

bool BottleAccount::updateCard()
{
    MutexLock lock(m_mutex);
    clearRecords();
    if (!readCard())
        return false;
    m_show(eventNone, QString(), MessageIcon::critical, MessageButtons::dismiss);
    if (restWeight(m_strUse) == 0)
        switchStrBottle();
    if (restWeight(m_supUse) == 0)
        switchSupBottle();
    return false;
}

// False: a bottle is in the wrong place. It and those behind it stay unread, so that nothing is fed out of
// them until the door has been open again.
bool BottleAccount::readCard()
{
    QString text;
    for (quint32 position = 1; position <= positions; ++position) {
        m_show(eventReading, EventHandler::eventMessage(eventReading).arg(position), MessageIcon::information,
               MessageButtons::none);
        Sleep(beforeReadMs);
        const CardInfo info = readPosition(position);
        if (isWrongPlace(info, position)) {
            showAlarm(m_show, eventWrongPlace, EventHandler::eventMessage(eventWrongPlace).arg(position));
            return false;
        }
        setRecord(slotOf(position), info);
        text += cardText(position, info);
    }
    LOG_WARNING(text);
    return true;
}

// Zero when the card could not be read twice, also where a part of it could.
CardInfo BottleAccount::readPosition(quint32 position)
{
    CardInfo info;
    if (m_card.getCardInfo(position, &info) == 0)
        return info;
    Sleep(beforeSecondReadMs);
    return m_card.getCardInfo(position, &info) == 0 ? info : CardInfo();
}

void BottleAccount::handleRestWeight(quint8 slot, bool fed)
{
    if (slot < slotOf(1) || slot > slotOf(positions)) {
        LOG_WARNING(QStringLiteral("no bottle %1").arg(slot));
        return;
    }
    MutexLock lock(m_mutex);
    CardInfo info = record(slot);
    info.rest_weight = restAfterFeed(info.rest_weight, fed);
    setRecord(slot, info);
    writeRest(slot - 1u, info.rest_weight);
}

void BottleAccount::writeRest(quint32 channel, quint32 rest)
{
    int tries = 0;
    bool written = false;
    // With the door open the bottle may be gone; its card is read again when the door closes.
    for (; !written && tries < writeTries && m_inkDoorClosed != 0; ++tries)
        written = m_card.writeWeight(channel, rest) == 1;
    const bool failed = !written && tries == writeTries;
    const QString text = QStringLiteral("write num=%1,weight=%2 i=%3").arg(channel).arg(rest).arg(tries);
    LOG_WARNING(failed ? QStringLiteral("not ") + text : text);
    if (failed)
        showAlarm(m_show, eventNotWritten, EventHandler::eventMessage(eventNotWritten).arg(channel));
}

CardInfo BottleAccount::record(quint8 slot) const
{
    MutexLock lock(m_recordMutex);
    return m_cards[slot];
}

void BottleAccount::setRecord(quint8 slot, const CardInfo &info)
{
    MutexLock lock(m_recordMutex);
    m_cards[slot] = info;
}

void BottleAccount::clearRecords()
{
    MutexLock lock(m_recordMutex);
    m_cards = {};
}

void BottleAccount::switchBottle(InkPath path)
{
    const BottlePair pair = bottlePair(path);
    std::atomic<quint8> &use = path == StructureInk ? m_strUse : m_supUse;
    const quint8 now = use;
    const QString text = QStringLiteral("%1 = %2,m_cards[%3].rest_weight = %4,m_cards[%5].rest_weight =%6\n");
    LOG_WARNING(text.arg(QLatin1String(path == StructureInk ? "m_strUse" : "m_supUse"))
                    .arg(now)
                    .arg(pair.second)
                    .arg(restWeight(pair.second))
                    .arg(pair.first)
                    .arg(restWeight(pair.first)));
    const quint8 other = now == pair.first ? pair.second : pair.first;
    const CardInfo info = record(other);
    if (info.rest_weight > 0 && info.weight > 0)
        use = other;
}

void BottleAccount::setBottleInUse(quint8 strUse, quint8 supUse)
{
    const auto isOf = [](InkPath path, quint8 slot) {
        const BottlePair pair = bottlePair(path);
        return slot == pair.first || slot == pair.second;
    };
    if (!isOf(StructureInk, strUse) || !isOf(SupportInk, supUse)) {
        LOG_WARNING(QStringLiteral("no such bottles %1 %2").arg(strUse).arg(supUse));
        return;
    }
    m_strUse = strUse;
    m_supUse = supUse;
}

Bottles BottleAccount::cards() const
{
    Bottles bottles;
    bottles.strUse = m_strUse;
    bottles.supUse = m_supUse;
    MutexLock lock(m_recordMutex);
    bottles.cards = m_cards;
    return bottles;
}
