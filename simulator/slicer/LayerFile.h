#pragma once
// Layer files, little-endian: mark "LYR1", layer number and window row count (4 bytes each), compressed
// length P and inner length I (4 bytes each), then P bytes of zlib stream around I bytes of zlib stream
// around the picture's rows, bottom row first, each padded to 32 bits, lowest bit leftmost.
#include "MeshSlicer.h"

#include <string>

class LayerFile
{
public:
    LayerFile(const Model &model, const Window &window);
    /// Writes one picture under a name of its own and then gives it its right name, so that who finds it
    /// finds it whole. False when it cannot be written. Any thread.
    bool write(const std::string &folder, char kind, int layer, const Bits &bits, bool damaged = false) const;

private:
    /// A run of blank rows, packed once.
    struct Blank {
        std::string packed;
        uint32_t checksum;
        uint64_t size;
    };
    Blank packBlank(int rows) const;
    std::string packPicture(const Bits &bits) const;

    int m_stride; ///< bytes a row
    Window m_window;
    Blank m_above, m_below;
};
