#pragma once
// The four bottles in their places: wax that is really in them, and the card on each.

#include "SmartCard.h"

#include <array>

enum class CardFault { None, WrongKey, WrongPlace, Unreadable, Missing, WriteFail, PullOnWrite };

struct Bottle {
    bool present = true;
    double grams = 0; ///< wax in the bottle, whatever its card says
    SmartCard card;
    CardFault fault = CardFault::None;
    unsigned insertion = 0; ///< grows with each placing: a card that was away has lost its power

    bool cardInField() const { return present && fault != CardFault::Missing; }
};

/// Positions 1 and 2 support, 3 and 4 structure.
class BottleRack
{
public:
    static constexpr int positions = 4;
    static bool exists(int position) { return position >= 1 && position <= positions; }

    /// As a machine is handed over: right cards, the bottles drawn on first full.
    BottleRack();
    Bottle &at(int position) { return m_bottles[size_t(position - 1)]; }
    const Bottle &at(int position) const { return m_bottles[size_t(position - 1)]; }

    void pull(int position) { at(position).present = false; }
    void put(int position);
    /// A fresh bottle with a fresh card. An empty `sn` takes the next serial number.
    void exchange(int position, double grams, const std::string &sn = {});
    /// One fault at a time; what an earlier one changed is mended. `count` is that of WriteFail.
    void setFault(int position, CardFault fault, int count = 0);

private:
    std::array<Bottle, positions> m_bottles;
    int m_serial = 0;
};
