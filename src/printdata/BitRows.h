#pragma once
// Rows of one bit a pixel, lowest bit first, worked a word at a time. Any thread.

#include <QtGlobal>
#include <cstring>

/// Set bits of `bytes` bytes.
inline quint64 countBits(const uchar *row, int bytes)
{
    quint64 bits = 0;
    int at = 0;
    for (; at + 8 <= bytes; at += 8) {
        quint64 word;
        std::memcpy(&word, row + at, 8);
        bits += quint64(__builtin_popcountll(word));
    }
    for (; at < bytes; ++at)
        bits += quint64(__builtin_popcount(row[at]));
    return bits;
}

/// The 64 bits of a word in opposite order.
inline quint64 mirrorWord(quint64 word)
{
    word = ((word >> 1) & 0x5555555555555555u) | ((word & 0x5555555555555555u) << 1);
    word = ((word >> 2) & 0x3333333333333333u) | ((word & 0x3333333333333333u) << 2);
    word = ((word >> 4) & 0x0f0f0f0f0f0f0f0fu) | ((word & 0x0f0f0f0f0f0f0f0fu) << 4);
    return __builtin_bswap64(word);
}

/// Copies a row with its pixels in opposite order. `bytes` is a multiple of 4 and every bit is a pixel.
inline void mirrorRow(uchar *to, const uchar *from, int bytes)
{
    int at = 0;
    for (; at + 8 <= bytes; at += 8) {
        quint64 word;
        std::memcpy(&word, from + at, 8);
        word = mirrorWord(word);
        std::memcpy(to + bytes - at - 8, &word, 8);
    }
    if (at < bytes) {
        quint32 half;
        std::memcpy(&half, from + at, 4);
        half = quint32(mirrorWord(half) >> 32);
        std::memcpy(to, &half, 4);
    }
}
