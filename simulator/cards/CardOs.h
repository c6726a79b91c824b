#pragma once
// The operating system on a bottle's card: the few commands of ISO 7816-4 that its two files need.

#include "BottleRack.h"
#include "Crc.h"

#include <functional>

class CardOs
{
public:
    /// Asked for each byte of a challenge.
    using Random = std::function<uint8_t()>;

    CardOs(Bottle &bottle, Random random) : m_bottle(bottle), m_random(std::move(random)) {}

    /// As after the field came up: nothing selected, nobody authenticated.
    void reset();
    /// Data and status word; empty when the card has gone in the middle of the command.
    Bytes answer(const Bytes &command);

private:
    Bytes select(const Bytes &command);
    Bytes getChallenge(const Bytes &command);
    Bytes authenticate(const Bytes &command);
    Bytes readBinary(const Bytes &command);
    Bytes updateBinary(const Bytes &command);
    /// 0 when `length` bytes at the command's offset may be touched, else the status word.
    uint16_t checkAccess(const Bytes &command, size_t length) const;
    Bytes file() const;

    Bottle &m_bottle;
    Random m_random;
    int m_file = 0;
    Bytes m_challenge;
    bool m_authenticated = false;
};
