#pragma once
// What lies under what: for each cell the highest layer that has structure. Everything below it that is not
// structure is support, down to the platform, but for a gap of one cell beside the part.
#include "MeshSlicer.h"

class SupportMap
{
public:
    explicit SupportMap(const MeshSlicer &slicer);
    /// Looks at rows firstRow to endRow - 1 through all layers from the top down. Threads may share the map
    /// when their rows do not overlap. `passed` is called after each layer.
    template <typename Passed> void build(int layers, int firstRow, int endRow, Passed passed)
    {
        Bits bits(m_covered.size());
        for (int layer = layers; layer >= 1; --layer) {
            m_slicer.slice(layer, firstRow, endRow, &bits);
            note(layer, firstRow, endRow, bits);
            passed();
        }
    }
    /// The support of a layer, given its structure. Any thread, once the map is built.
    void support(int layer, const Bits &structure, Bits *bits) const;

private:
    void note(int layer, int firstRow, int endRow, const Bits &structure);
    uint64_t grown(const Bits &structure, int row, int word) const;

    const MeshSlicer &m_slicer;
    const Window m_window;
    Bits m_covered;              ///< cells whose top is known
    std::vector<uint16_t> m_top; ///< highest layer with structure, 0 for none
};
