#pragma once
// A card in a reader's field: woken, picked and selected as ISO 14443-3 type A says, then spoken to in blocks
// of ISO 14443-4. What it has reached is gone with the field.

#include "CardOs.h"

#include <QString>

/// What is on the air in one direction.
struct AirFrame {
    Bytes bytes;
    int lastBits = 0; ///< bits of the last byte that count; 0: all
};

class ContactlessCard
{
public:
    using Violation = std::function<void(const char *name, const QString &detail)>;

    ContactlessCard(Bottle &bottle, CardOs::Random random, Violation violation);

    /// The field went off, or came up anew.
    void reset();
    /// The card's answer; empty when it is silent, or away.
    Bytes receive(const AirFrame &frame);

private:
    enum class State { Idle, Ready, Active, Halted, Protocol };

    Bytes wake(const AirFrame &frame);
    Bytes pick(const Bytes &frame);
    Bytes select(Bytes frame);
    Bytes whenActive(Bytes frame);
    Bytes enterProtocol(const Bytes &frame);
    Bytes block(Bytes frame);
    Bytes informationBlock(const Bytes &frame);
    /// The four bytes and their XOR.
    Bytes identity() const;

    Bottle &m_bottle;
    Violation m_violation;
    CardOs m_os;
    State m_state = State::Idle;
    unsigned m_insertion = 0;
    int m_cid = 0;
    int m_blockNumber = 0;
    size_t m_frameLimit = 0; ///< what the reader can take
};
