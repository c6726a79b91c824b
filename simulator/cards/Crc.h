#pragma once
// The checksum of ISO 14443-3 type A: polynomial x^16 + x^12 + x^5 + 1, bit-reversed; low byte first on the
// air.

#include <cstdint>
#include <vector>

using Bytes = std::vector<uint8_t>;

constexpr uint16_t crcTypeA = 0x6363; ///< start value

inline uint16_t crcStep(uint16_t crc, uint8_t byte)
{
    crc = uint16_t(crc ^ byte);
    for (int bit = 0; bit < 8; ++bit)
        crc = uint16_t(crc & 1 ? (crc >> 1) ^ 0x8408 : crc >> 1);
    return crc;
}

inline void appendCrc(Bytes *frame)
{
    uint16_t crc = crcTypeA;
    for (uint8_t byte : *frame)
        crc = crcStep(crc, byte);
    frame->push_back(uint8_t(crc));
    frame->push_back(uint8_t(crc >> 8));
}

/// Takes the checksum off; false when it is not there or wrong.
inline bool takeCrc(Bytes *frame)
{
    if (frame->size() < 2)
        return false;
    Bytes right(frame->begin(), frame->end() - 2);
    appendCrc(&right);
    if (right != *frame)
        return false;
    frame->resize(frame->size() - 2);
    return true;
}
