#include "PartSketch.h"

#include "Look.h"
#include "PartRecorder.h"

#include <QElapsedTimer>

namespace
{
constexpr int columns = 640, rowsDeep = 460, rowsHigh = 300;
constexpr qint64 limitNs = 1500000;

void mark(QImage *image, QRect *used, int x, int y, QRgb colour)
{
    if (!image->valid(x, y))
        return;
    QRgb &pixel = reinterpret_cast<QRgb *>(image->scanLine(y))[x];
    if (pixel != look::structure)
        pixel = colour;
    *used |= QRect(x, y, 1, 1);
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

/// Eight columns are a third of a millimetre: finer than a cell.
void PartSketch::addPlane(const PassRecord &pass, const SparsePlane &plane, QRgb colour)
{
    const int z = int(pass.z / cell);
    plane.forEachRow([&](int row, int firstByte, const uint8_t *data, int count) {
        const int head = pass.headOfRow(row);
        if (head < 0)
            return;
        const int y = int((pass.dotY(head, row) - geometry::bedOriginY) / cell);
        for (int i = 0; i < count; ++i) {
            if (!data[i])
                continue;
            const int x = int((pass.dotX(head, (firstByte + i) * 8) - geometry::bedOriginX) / cell);
            mark(&m_front, &m_frontCells, x, z, colour);
            mark(&m_top, &m_topCells, x, y, colour);
        }
    });
}
