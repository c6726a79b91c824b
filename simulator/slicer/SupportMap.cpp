#include "SupportMap.h"

#include <algorithm>

SupportMap::SupportMap(const MeshSlicer &slicer)
    : m_slicer(slicer), m_window(slicer.window()), m_covered(m_window.cells() / 64), m_top(m_window.cells())
{
}

void SupportMap::note(int layer, int firstRow, int endRow, const Bits &structure)
{
    const size_t end = size_t(endRow) * m_window.words;
    for (size_t word = size_t(firstRow) * m_window.words; word < end; ++word) {
        uint64_t fresh = structure[word] & ~m_covered[word];
        m_covered[word] |= fresh;
        for (; fresh; fresh &= fresh - 1)
            m_top[word * 64 + size_t(__builtin_ctzll(fresh))] = uint16_t(layer);
    }
}

uint64_t SupportMap::grown(const Bits &structure, int row, int word) const
{
    uint64_t result = 0;
    for (int r = std::max(row - 1, 0); r <= std::min(row + 1, m_window.rows - 1); ++r) {
        const uint64_t *line = structure.data() + size_t(r) * m_window.words;
        const uint64_t here = line[word];
        const uint64_t before = word > 0 ? line[word - 1] >> 63 : 0;
        const uint64_t after = word + 1 < m_window.words ? line[word + 1] << 63 : 0;
        result |= here | here << 1 | here >> 1 | before | after;
    }
    return result;
}

void SupportMap::support(int layer, const Bits &structure, Bits *bits) const
{
    for (int row = 0; row < m_window.rows; ++row)
        for (int word = 0; word < m_window.words; ++word) {
            const size_t at = size_t(row) * m_window.words + size_t(word);
            if (m_covered[at] == 0) {
                (*bits)[at] = 0;
                continue;
            }
            const uint16_t *top = m_top.data() + at * 64;
            uint64_t under = 0;
            for (int bit = 0; bit < 64; ++bit)
                under |= uint64_t(top[bit] > layer) << bit;
            (*bits)[at] = under ? under & ~grown(structure, row, word) : 0;
        }
}
