#pragma once
// A picture of a whole layer, one bit a dot, lowest bit first, top row first.

#include <cstddef>
#include <cstdint>
#include <vector>

class LayerBits
{
public:
    LayerBits() = default;
    LayerBits(int width, int height)
        : m_stride((width + 31) / 32 * 4), m_height(height),
          m_bits(std::size_t(m_stride) * std::size_t(height))
    {
    }
    int stride() const { return m_stride; }
    int height() const { return m_height; }
    uint8_t *row(int row) { return m_bits.data() + std::size_t(row) * std::size_t(m_stride); }
    const uint8_t *row(int row) const { return m_bits.data() + std::size_t(row) * std::size_t(m_stride); }
    /// False when the dot was set before.
    bool set(int row, int column)
    {
        uint8_t &byte = this->row(row)[column / 8];
        const auto bit = uint8_t(1u << column % 8);
        const bool fresh = !(byte & bit);
        byte |= bit;
        return fresh;
    }

private:
    int m_stride = 0;
    int m_height = 0;
    std::vector<uint8_t> m_bits;
};
