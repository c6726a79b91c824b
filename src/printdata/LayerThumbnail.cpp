#include "printdata/LayerThumbnail.h"

#include "printdata/BitRows.h"

#include <QFileInfo>
#include <algorithm>
#include <cmath>

namespace
{
constexpr int bitsPerByte = 8;

/// Set pixels of a row from `begin` to before `end`.
quint64 countPixels(const uchar *row, int begin, int end)
{
    if (begin >= end)
        return 0;
    const int first = begin / bitsPerByte;
    const int last = end / bitsPerByte;
    const uchar head = uchar(0xff << (begin % bitsPerByte));
    const uchar tail = uchar(0xff >> (bitsPerByte - end % bitsPerByte)); // 0 when `end` begins a byte
    const auto ones = [](int byte) { return quint64(__builtin_popcount(unsigned(byte))); };
    if (first == last)
        return ones(row[first] & head & tail);
    return ones(row[first] & head) + countBits(row + first + 1, last - first - 1) +
           (tail ? ones(row[last] & tail) : 0);
}

/// Pixel borders between `begin` and `begin + length`, cut into `count` boxes of one pixel or more.
struct Boxes {
    double begin, length;
    int count, limit;
    int low(int box) const { return std::clamp(int(begin + length * box / count), 0, limit); }
    int high(int box) const
    {
        return std::clamp(std::max(low(box) + 1, int(begin + length * (box + 1) / count)), 0, limit);
    }
};

/// Thin walls stay visible: the share of a box that is printed is shown by its root.
QRgb boxColour(double structure, double support, const LayerSource &source)
{
    const double both = structure + support;
    if (both <= 0)
        return 0;
    const auto mixed = [&](int a, int b) { return int((a * structure + b * support) / both); };
    return qRgba(mixed(source.structure.red(), source.support.red()),
                 mixed(source.structure.green(), source.support.green()),
                 mixed(source.structure.blue(), source.support.blue()),
                 int(255 * std::sqrt(std::min(1.0, both))));
}
} // namespace

LayerThumbnail::LayerThumbnail(const LayerSource &source)
    : m_source(source), m_stride(source.columns / bitsPerByte)
{
}

bool LayerThumbnail::read(char kind, int layer, Bits *bits)
{
    const QString path = layerFile(m_source.folder, kind, layer);
    if (!QFileInfo::exists(path)) // fallen behind the print, or not sliced yet: nothing to log
        return false;
    bits->assign(size_t(m_stride) * size_t(m_source.rows), 0);
    auto length = qint64(bits->size());
    return m_reader.unpack(path, bits->data(), &length);
}

const uchar *LayerThumbnail::row(const Bits &bits, int number) const
{
    return bits.data() + qint64{m_source.rows - 1 - number} * m_stride;
}

/// Columns count by bytes: the window needs no better.
void LayerThumbnail::widenWindow(const Bits &bits)
{
    for (int y = 0; y < m_source.rows; ++y) {
        const uchar *begin = row(bits, y);
        const uchar *end = begin + m_stride;
        const auto printed = [](uchar byte) { return byte != 0; };
        const uchar *first = std::find_if(begin, end, printed);
        if (first == end)
            continue;
        const uchar *last = end;
        while (last[-1] == 0)
            --last;
        m_window |= QRect(int(first - begin) * bitsPerByte, y, int(last - first) * bitsPerByte, 1);
    }
}

/// The window with a margin, widened to the shape of the picture.
QRectF LayerThumbnail::view(const QSize &size) const
{
    const QRectF window(m_window);
    const double margin = 1.08;
    const double scale =
        margin * std::max(window.width() / size.width(), window.height() * m_source.rowPitch / size.height());
    QRectF shown(0, 0, scale * size.width(), scale * size.height() / m_source.rowPitch);
    shown.moveCenter(window.center());
    return shown;
}

QImage LayerThumbnail::picture(int layer, const QSize &size)
{
    if (m_source.columns <= 0 || m_source.rows <= 0 || !read('m', layer, &m_structure) ||
        !read('s', layer, &m_support))
        return {};
    widenWindow(m_structure);
    widenWindow(m_support);
    QImage result(size, QImage::Format_ARGB32);
    result.fill(0);
    if (m_window.isEmpty())
        return result;
    const QRectF shown = view(size);
    const Boxes across{shown.x(), shown.width(), size.width(), m_source.columns};
    const Boxes down{shown.y(), shown.height(), size.height(), m_source.rows};
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const int left = across.low(x), right = across.high(x);
            quint64 structure = 0, support = 0;
            for (int line = down.low(y); line < down.high(y); ++line) {
                structure += countPixels(row(m_structure, line), left, right);
                support += countPixels(row(m_support, line), left, right);
            }
            const double area = std::max(1.0, double(right - left) * (down.high(y) - down.low(y)));
            result.setPixel(x, y, boxColour(double(structure) / area, double(support) / area, m_source));
        }
    }
    return result;
}
