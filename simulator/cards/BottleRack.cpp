#include "BottleRack.h"

#include <cmath>

namespace
{
/// The ASCII text "PELORA620-WAXKEY": an issuer's own two-key triple-DES key goes here, and into the program.
constexpr std::array<uint8_t, 16> issuedKey = {0x50, 0x45, 0x4C, 0x4F, 0x52, 0x41, 0x36, 0x32,
                                               0x30, 0x2D, 0x57, 0x41, 0x58, 0x4B, 0x45, 0x59};
constexpr int firstSerial = 10000001; ///< eight figures, that with their prefix make 15 characters
constexpr uint32_t fullGrams = 3600;
/// Divisible by 256, so that it reads the same where its low byte is lost.
constexpr uint32_t expiry = 20271104;
/// Positions 2 and 4 are drawn on first and full, 1 and 3 wait part-used.
constexpr uint32_t deliveredGrams[] = {2400, fullGrams, 1900, fullGrams};

const char *materialOf(int position)
{
    return position <= 2 ? "MTS7205" : "MTJ7401";
}
} // namespace

BottleRack::BottleRack()
{
    for (int position = 1; position <= positions; ++position) {
        Bottle &bottle = at(position);
        exchange(position, deliveredGrams[position - 1]);
        bottle.card.weight = fullGrams;
    }
}

void BottleRack::put(int position)
{
    Bottle &bottle = at(position);
    bottle.present = true;
    ++bottle.insertion;
}

void BottleRack::exchange(int position, double grams, const std::string &sn)
{
    Bottle fresh;
    fresh.grams = grams;
    fresh.insertion = at(position).insertion + 1;
    const std::string serial = std::to_string(firstSerial + m_serial++);
    fresh.card.type = materialOf(position);
    fresh.card.sn = sn.empty() ? "WX2026S" + serial : sn;
    fresh.card.rest = uint32_t(std::lround(grams));
    fresh.card.weight = fresh.card.rest;
    fresh.card.date = expiry;
    fresh.card.key = issuedKey;
    at(position) = fresh;
}

void BottleRack::setFault(int position, CardFault fault, int count)
{
    Bottle &bottle = at(position);
    if (bottle.fault == CardFault::Missing)
        ++bottle.insertion;
    bottle.fault = fault;
    bottle.card.key = issuedKey;
    if (fault == CardFault::WrongKey)
        bottle.card.key[0] ^= 0x80; // the lowest bit of a DES key byte would be its unused parity
    bottle.card.type = materialOf(fault == CardFault::WrongPlace ? positions + 1 - position : position);
    bottle.card.unreadable = fault == CardFault::Unreadable;
    bottle.card.refusedWrites = fault == CardFault::WriteFail ? count : 0;
}
