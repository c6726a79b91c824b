#pragma once
// The four bottles in their places: wax that is really in them, and the card on each.

#include "SmartCard.h"

#include <array>

struct Bottle {
    bool present = true;
    double grams = 0; ///< wax in the bottle, whatever its card says
    SmartCard card;
};

/// Positions 1 and 2 support, 3 and 4 structure.
class BottleRack
{
public:
    static constexpr int positions = 4;
    static bool exists(int position) { return position >= 1 && position <= positions; }

    /// As a machine is handed over: all full, right cards.
    BottleRack();
    Bottle &at(int position) { return m_bottles[size_t(position - 1)]; }
    const Bottle &at(int position) const { return m_bottles[size_t(position - 1)]; }

private:
    std::array<Bottle, positions> m_bottles;
};
