#pragma once
// The card station as the program meets it on its line: a multiplexer, behind it one reader chip a bottle,
// and the bottles' cards. It knows no port, so a test feeds it bytes.

#include "ReaderChip.h"

#include <QByteArray>
#include <memory>
#include <random>

class CardStation
{
public:
    struct World {
        ContactlessCard::Violation violation;
        /// The chips' time; without one, real time.
        std::function<double()> seconds = {};
    };

    CardStation(BottleRack &rack, World world);

    /// What the multiplexer sends back at once, in whole answers.
    std::vector<QByteArray> receive(const QByteArray &bytes);
    /// Of the cards' challenges.
    void setSeed(unsigned seed) { m_random.seed(seed); }

private:
    struct Position {
        ContactlessCard card;
        ReaderChip chip;
        Position(Bottle &bottle, CardOs::Random random, const World &world);
    };

    void select(int channel);
    bool isCommand() const;
    QByteArray obey();
    void skipGarbage();

    World m_world;
    std::mt19937 m_random{1};
    std::vector<std::unique_ptr<Position>> m_positions;
    Position *m_selected = nullptr; ///< null: nobody answers on this channel
    Bytes m_pending;
    bool m_inGarbage = false;
};
