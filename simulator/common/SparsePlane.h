#pragma once
// One ink's picture of a pass: only the rows that hold dots, each without its empty ends. A part covers a
// small share of the bed, so this is what travels to the machine and what it keeps.

#include <cstdint>
#include <cstring>
#include <vector>

struct SparsePlane {
    // Entries of 6 bytes little-endian (row, first byte, byte count) followed by the bytes; rows ascend.
    std::vector<uint8_t> bytes;

    static constexpr size_t entryHead = 6;

    /// Packs rows of one bit a pixel, lowest bit first; what lies right of `width` is left out.
    static SparsePlane pack(const uint8_t *bits, int width, int rows, int stride);
    /// Whether the entries are whole and lie inside a picture of this size.
    bool valid(int width, int rows) const;
    uint64_t dots() const;

    /// Set bits of a run of bytes.
    static uint64_t countBits(const uint8_t *data, int count);

    /// Calls f(row, firstByte, data, count) for each row.
    template <typename F> void forEachRow(F f) const
    {
        const uint8_t *at = bytes.data();
        const uint8_t *end = at + bytes.size();
        while (end - at >= int(entryHead)) {
            uint16_t head[3];
            std::memcpy(head, at, entryHead);
            at += entryHead;
            if (end - at < head[2])
                return;
            f(int(head[0]), int(head[1]), at, int(head[2]));
            at += head[2];
        }
    }

    /// Calls f(row, column) for each dot.
    template <typename F> void forEachDot(F f) const
    {
        forEachRow([&f](int row, int firstByte, const uint8_t *data, int count) {
            for (int i = 0; i < count; ++i) {
                for (unsigned rest = data[i]; rest; rest &= rest - 1)
                    f(row, (firstByte + i) * 8 + __builtin_ctz(rest));
            }
        });
    }
};
