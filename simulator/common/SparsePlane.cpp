#include "common/SparsePlane.h"

namespace
{
/// Index of the first byte that is not 0, `count` when all are.
int firstUsed(const uint8_t *row, int count)
{
    int at = 0;
    for (uint64_t word = 0; at + 8 <= count; at += 8) {
        std::memcpy(&word, row + at, 8);
        if (word)
            break;
    }
    while (at < count && !row[at])
        ++at;
    return at;
}

int usedLength(const uint8_t *row, int count)
{
    while (count > 0 && !row[count - 1])
        --count;
    return count;
}
} // namespace

SparsePlane SparsePlane::pack(const uint8_t *bits, int width, int rows, int stride)
{
    SparsePlane plane;
    const int rowBytes = (width + 7) / 8;
    plane.bytes.reserve(4096);
    const uint8_t lastMask = width % 8 ? uint8_t((1 << width % 8) - 1) : uint8_t(0xFF);
    for (int row = 0; row < rows; ++row) {
        const uint8_t *line = bits + size_t(row) * size_t(stride);
        const int first = firstUsed(line, rowBytes);
        if (first == rowBytes)
            continue;
        const int count = usedLength(line, rowBytes) - first;
        const uint16_t head[3] = {uint16_t(row), uint16_t(first), uint16_t(count)};
        const size_t at = plane.bytes.size();
        plane.bytes.resize(at + entryHead + size_t(count));
        std::memcpy(plane.bytes.data() + at, head, entryHead);
        std::memcpy(plane.bytes.data() + at + entryHead, line + first, size_t(count));
        if (first + count == rowBytes)
            plane.bytes.back() &= lastMask;
    }
    return plane;
}

bool SparsePlane::valid(int width, int rows) const
{
    const int rowBytes = (width + 7) / 8;
    size_t used = 0;
    int previous = -1;
    bool inside = true;
    forEachRow([&](int row, int firstByte, const uint8_t *, int count) {
        inside = inside && row > previous && row < rows && firstByte + count <= rowBytes;
        previous = row;
        used += entryHead + size_t(count);
    });
    return inside && used == bytes.size();
}

uint64_t SparsePlane::dots() const
{
    uint64_t sum = 0;
    forEachRow([&sum](int, int, const uint8_t *data, int count) { sum += countBits(data, count); });
    return sum;
}

uint64_t SparsePlane::countBits(const uint8_t *data, int count)
{
    uint64_t sum = 0;
    int at = 0;
    for (uint64_t word = 0; at + 8 <= count; at += 8) {
        std::memcpy(&word, data + at, 8);
        sum += unsigned(__builtin_popcountll(word));
    }
    for (; at < count; ++at)
        sum += unsigned(__builtin_popcount(data[at]));
    return sum;
}
