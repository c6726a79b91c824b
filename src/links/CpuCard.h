#pragma once
// The reader of the bottles' contactless cards: chips behind a multiplexer on a serial port. Synchronous, without
// a lock or thread: callers serialise. An operation takes seconds, since each access to a chip is paced.

#include "links/CardInfo.h"

#include <memory>

class CpuCard
{
public:
    /// `tagConfig` 1 sets the chip up for these cards; 0 leaves it at its usual receiver settings.
    explicit CpuCard(quint8 tagConfig);
    ~CpuCard();
    CpuCard(const CpuCard &) = delete;
    CpuCard &operator=(const CpuCard &) = delete;

    /// `name` is "COM<n>"; 9600 baud or, for any other value, 115200. 0, or -1 on failure.
    int OpenPort(const char *name, quint32 baud);
    /// Reads both files of the card at a position of the multiplexer, 1 to 4 on this machine. `info` is zeroed
    /// first. 0, or -1 on any failure.
    int getCardInfo(quint32 channel, CardInfo *info);
    /// Writes the rest of a bottle in grams. 1 on success, 0 on failure.
    int writeWeight(quint32 channel, quint32 weight);

private:
    struct Private;
    std::unique_ptr<Private> d;
};
