#include "PartSketch.h"

#include "Look.h"
#include "PartRecorder.h"

#include <QElapsedTimer>
#include <algorithm>

namespace
{
constexpr int columns = 1280, rowsDeep = 920, rowsHigh = 600;
constexpr qint64 limitNs = 1500000;

/// Cells of one row from `left` to `right`; support never hides structure.
void markSpan(QImage *image, QRect *used, int y, int left, int right, QRgb colour)
{
    left = std::max(left, 0);
    right = std::min(right, image->width() - 1);
    if (y < 0 || y >= image->height() || left > right)
        return;
    QRgb *pixels = reinterpret_cast<QRgb *>(image->scanLine(y));
    for (int x = left; x <= right; ++x)
        pixels[x] = pixels[x] == look::structure ? pixels[x] : colour;
    *used |= QRect(left, y, right - left + 1, 1);
}
} // namespace

PartSketch::PartSketch()
    : m_front(columns, rowsHigh, QImage::Format_ARGB32_Premultiplied),
      m_top(columns, rowsDeep, QImage::Format_ARGB32_Premultiplied)
{
    clear();
}

void PartSketch::clear()
{
    m_front.fill(Qt::transparent);
    m_top.fill(Qt::transparent);
    m_frontCells = m_topCells = QRect();
}

void PartSketch::follow(const PartRecorder &recorder, double partTop)
{
    if (partTop < m_partTop) {
        clear();
        m_taken = recorder.passes().size();
    }
    m_partTop = partTop;
    QElapsedTimer clock;
    for (clock.start(); m_taken < recorder.passes().size() && clock.nsecsElapsed() < limitNs; ++m_taken)
        add(recorder.passes()[m_taken]);
}

void PartSketch::add(const PassRecord &pass)
{
    addPlane(pass, pass.support, look::support);
    addPlane(pass, pass.structure, look::structure);
}

/// By runs of bytes that hold something: eight columns are a third of a millimetre, about a cell.
void PartSketch::addPlane(const PassRecord &pass, const SparsePlane &plane, QRgb colour)
{
    const int z = int(pass.z / cell);
    plane.forEachRow([&](int row, int firstByte, const uint8_t *data, int count) {
        const int head = pass.headOfRow(row);
        if (head < 0)
            return;
        const int y = int((pass.dotY(head, row) - geometry::bedOriginY) / cell);
        const auto cellOf = [&](int byte) {
            return int((pass.dotX(head, byte * 8) - geometry::bedOriginX) / cell);
        };
        for (int i = 0; i < count; ++i) {
            if (!data[i])
                continue;
            const int first = firstByte + i;
            while (i + 1 < count && data[i + 1])
                ++i;
            const auto [left, right] = std::minmax({cellOf(first), cellOf(firstByte + i)});
            markSpan(&m_front, &m_frontCells, z, left, right, colour);
            markSpan(&m_top, &m_topCells, y, left, right, colour);
        }
    });
}
