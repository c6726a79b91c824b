#include "LayerFile.h"

#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <zlib.h>

namespace
{
constexpr int fast = 1; // zlib's level: the print waits for the slicer, the disk does not

/// Deflates without a frame. A piece that is not the last ends on a byte, so pieces can be put one behind the
/// other.
std::string deflateRaw(const std::string &bytes, bool last)
{
    z_stream stream = {};
    if (deflateInit2(&stream, fast, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) != Z_OK)
        throw std::bad_alloc();
    std::string packed(deflateBound(&stream, uLong(bytes.size())) + 16, '\0');
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(bytes.data()));
    stream.avail_in = uInt(bytes.size());
    stream.next_out = reinterpret_cast<Bytef *>(&packed[0]);
    stream.avail_out = uInt(packed.size());
    deflate(&stream, last ? Z_FINISH : Z_FULL_FLUSH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

uint32_t checksum(const std::string &bytes)
{
    return uint32_t(
        adler32(adler32(0, nullptr, 0), reinterpret_cast<const Bytef *>(bytes.data()), uInt(bytes.size())));
}

std::string frame(const std::string &deflated, uint32_t checksum)
{
    std::string stream = "\x78\x01" + deflated;
    for (int shift = 24; shift >= 0; shift -= 8)
        stream += char(checksum >> shift);
    return stream;
}

bool writeFile(const std::string &path, const std::string &bytes)
{
    FILE *file = std::fopen(path.c_str(), "wb");
    if (!file)
        return false;
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    return std::fclose(file) == 0 && written;
}
} // namespace

LayerFile::LayerFile(const Model &model, const Window &window)
    : m_stride((model.pixelsX + 2 * model.extraBlankPixel + 31) / 32 * 4), m_window(window),
      m_above(packBlank(window.firstRow)), m_below(packBlank(model.pixelsY - window.firstRow - window.rows))
{
}

LayerFile::Blank LayerFile::packBlank(int rows) const
{
    const std::string bytes(size_t(rows) * size_t(m_stride), '\0');
    return {deflateRaw(bytes, false), checksum(bytes), bytes.size()};
}

std::string LayerFile::packPicture(const Bits &bits) const
{
    // Nearly all of a picture is blank rows: they are the same in every layer and only the part's rows are
    // packed.
    std::string rows(size_t(m_window.rows) * size_t(m_stride), '\0');
    const size_t from = size_t(m_window.firstWord) * 8;
    const size_t length = std::min(size_t(m_window.words) * 8, size_t(m_stride) - from);
    for (int row = 0; row < m_window.rows; ++row)
        std::memcpy(&rows[size_t(m_window.rows - 1 - row) * size_t(m_stride) + from],
                    bits.data() + size_t(row) * m_window.words, length);
    uint32_t sum = uint32_t(adler32_combine(m_below.checksum, checksum(rows), z_off_t(rows.size())));
    sum = uint32_t(adler32_combine(sum, m_above.checksum, z_off_t(m_above.size)));
    return frame(m_below.packed + deflateRaw(rows, false) + m_above.packed + deflateRaw({}, true), sum);
}

bool LayerFile::write(const std::string &folder, char kind, int layer, const Bits &bits, bool damaged) const
{
    const std::string inner = packPicture(bits);
    std::string outer = frame(deflateRaw(inner, true), checksum(inner));
    if (damaged)
        outer[outer.size() / 2] = char(outer[outer.size() / 2] ^ 0x55);
    const uint32_t head[5] = {0x3152594c, uint32_t(layer), uint32_t(m_window.rows), uint32_t(outer.size()),
                              uint32_t(inner.size())};
    const std::string name = folder + "/slice_" + kind + std::to_string(layer);
    const std::string part = name + ".part";
    return writeFile(part, std::string(reinterpret_cast<const char *>(head), sizeof head) + outer) &&
           std::rename(part.c_str(), name.c_str()) == 0;
}
