#pragma once
// The bottles: what their cards say, what is left in them, and which of each pair is drawn on.

#include "links/CardInfo.h"
#include "links/CpuCard.h"
#include "material/ServiceMessage.h"
#include "platform/Mutex.h"

#include <array>
#include <atomic>

/// What the pages and the record see of the bottles: a copy.
struct Bottles {
    std::array<CardInfo, 6> cards; ///< slots 2 and 3 support, 4 and 5 structure
    quint8 strUse = 5;
    quint8 supUse = 3;
};

/// The two waxes. The numbers are also those of the heads' feeding mode.
enum InkPath { StructureInk = 1, SupportInk = 2 };

/// The slots of a wax's two bottles, in the order of their valves.
struct BottlePair {
    quint8 first;
    quint8 second;
};
constexpr BottlePair bottlePair(InkPath path)
{
    return path == StructureInk ? BottlePair{4, 5} : BottlePair{2, 3};
}

/// Grams left in a bottle after a valve feed out of it.
quint32 restAfterFeed(quint32 rest, bool fed);

class BottleAccount
{
public:
    /// `inkDoorClosed` outlives the account; no card is written while it is 0.
    BottleAccount(ServiceMessage show, const std::atomic<quint8> &inkDoorClosed);

    /// The card reader's port. Before any other use.
    bool openPort(int port);

    // For the door watch and the ink services; each may take tens of seconds and shows messages.
    /// Reads all cards anew, and draws on the other bottle where the one in use is empty. Always false.
    bool updateCard();
    /// Charges a bottle for a feed, good or failed, and writes its card.
    void handleRestWeight(quint8 slot, bool fed);

    // Any thread, at once:
    /// To the other bottle of the pair if there is wax in it.
    void switchStrBottle() { switchBottle(StructureInk); }
    void switchSupBottle() { switchBottle(SupportInk); }
    /// Structure 4 or 5, support 2 or 3; anything else changes nothing.
    void setBottleInUse(quint8 strUse, quint8 supUse);
    Bottles cards() const;
    quint8 inUse(InkPath path) const { return path == StructureInk ? m_strUse : m_supUse; }
    quint32 restWeight(quint8 slot) const { return record(slot).rest_weight; }

private:
    bool readCard() PELORA_REQUIRES(m_mutex);
    CardInfo readPosition(quint32 position) PELORA_REQUIRES(m_mutex);
    void writeRest(quint32 channel, quint32 rest) PELORA_REQUIRES(m_mutex);
    CardInfo record(quint8 slot) const;
    void setRecord(quint8 slot, const CardInfo &info) PELORA_REQUIRES(m_mutex);
    void clearRecords() PELORA_REQUIRES(m_mutex);
    void switchBottle(InkPath path);

    const ServiceMessage m_show;
    const std::atomic<quint8> &m_inkDoorClosed;

    // The door watch and both ink services use the one reader, which has no lock of its own. Held across card
    // I/O; who holds it sends no board message. Only its holder changes the records.
    Mutex m_mutex;
    CpuCard m_card PELORA_GUARDED_BY(m_mutex);

    // Held for a copy, never across I/O: pages and job read the records while a card is read or written.
    mutable Mutex m_recordMutex;
    std::array<CardInfo, 6> m_cards PELORA_GUARDED_BY(m_recordMutex);

    std::atomic<quint8> m_strUse{5};
    std::atomic<quint8> m_supUse{3};
};
