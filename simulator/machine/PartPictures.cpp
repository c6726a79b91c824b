#include "PartPictures.h"

#include "PartRecorder.h"

#include <QPoint>
#include <QRect>
#include <algorithm>
#include <array>
#include <cmath>

namespace
{
constexpr QRgb structureColour = 0xFFE0A030;
constexpr QRgb supportColour = 0xFF3F7FC8;
constexpr QRgb background = 0xFFF4F2EC;
constexpr int largestPicture = 3000;
constexpr int margin = 8;
constexpr double dotRow = geometry::nozzlePitch / 4; ///< rows of a picture of four passes
constexpr int cellsAcross = 200;                     ///< of the view's grid, along the part's longest side

/// Calls f(x, y, material) in micrometres of the bed, 0 structure and 1 support.
template <typename F> void forEachDrop(const PassRecord &pass, F f)
{
    for (int material : {0, 1}) {
        const SparsePlane &plane = material ? pass.support : pass.structure;
        plane.forEachDot([&](int row, int column) {
            const int head = pass.headOfRow(row);
            if (head >= 0)
                f(pass.dotX(head, column) - geometry::bedOriginX, pass.dotY(head, row) - geometry::bedOriginY,
                  material);
        });
    }
}

/// The smallest box around all drops of these passes; height by Z.
struct Extent {
    double low[3] = {1e12, 1e12, 1e12};
    double high[3] = {-1e12, -1e12, -1e12};

    void add(const PassRecord &pass)
    {
        forEachDrop(pass, [&](double x, double y, int) {
            const double at[3] = {x, y, pass.z};
            for (int i = 0; i < 3; ++i) {
                low[i] = std::min(low[i], at[i]);
                high[i] = std::max(high[i], at[i]);
            }
        });
    }
    bool empty() const { return low[0] > high[0]; }
    double size(int axis) const { return high[axis] - low[axis]; }
};

QRgb shaded(QRgb colour, double light)
{
    const auto part = [light](int value) { return int(std::min(255.0, value * light)); };
    return qRgb(part(qRed(colour)), part(qGreen(colour)), part(qBlue(colour)));
}

/// The part in cells: 0 empty, 1 structure, 2 support.
class Cells
{
public:
    Cells(const std::vector<PassRecord> &passes, const Extent &extent)
        : m_extent(extent),
          m_cell(std::max({extent.size(0), extent.size(1), extent.size(2), dotRow}) / cellsAcross)
    {
        m_cell = std::max(m_cell, dotRow);
        for (int i = 0; i < 3; ++i)
            m_count[size_t(i)] = int(extent.size(i) / m_cell) + 1;
        m_cells.resize(size_t(m_count[0]) * size_t(m_count[1]) * size_t(m_count[2]));
        for (const PassRecord &pass : passes) {
            forEachDrop(pass, [&](double x, double y, int material) {
                uint8_t &cell = m_cells[index(at(0, x), at(1, y), at(2, pass.z))];
                if (cell != 1)
                    cell = uint8_t(1 + material);
            });
        }
        fillDown();
    }
    int count(int axis) const { return m_count[size_t(axis)]; }
    int operator()(int x, int y, int z) const
    {
        const bool inside = x >= 0 && y >= 0 && z >= 0 && x < count(0) && y < count(1) && z < count(2);
        return inside ? m_cells[index(x, y, z)] : 0;
    }

private:
    int at(int axis, double value) const { return int((value - m_extent.low[axis]) / m_cell); }
    size_t index(int x, int y, int z) const
    {
        return (size_t(z) * size_t(count(1)) + size_t(y)) * size_t(count(0)) + size_t(x);
    }
    /// Raster support leaves gaps finer than a cell between two layers of cells; they are no holes.
    void fillDown()
    {
        for (int z = count(2) - 2; z > 0; --z) {
            for (int y = 0; y < count(1); ++y) {
                for (int x = 0; x < count(0); ++x) {
                    if (!m_cells[index(x, y, z)] && (*this)(x, y, z - 1) == (*this)(x, y, z + 1))
                        m_cells[index(x, y, z)] = uint8_t((*this)(x, y, z + 1));
                }
            }
        }
    }

    Extent m_extent;
    double m_cell;
    std::array<int, 3> m_count{};
    std::vector<uint8_t> m_cells;
};

/// Paints one cell as a small cube: a bright top, a middle and a dark side, where they are seen.
void paintCell(QImage *image, const Cells &cells, int x, int y, int z, QPoint at)
{
    const QRgb colour = cells(x, y, z) == 1 ? structureColour : supportColour;
    const bool top = !cells(x, y, z + 1), left = !cells(x, y + 1, z), right = !cells(x + 1, y, z);
    const auto fill = [&](int dx, int dy, int width, int height, double light) {
        for (int v = dy; v < dy + height; ++v) {
            for (int u = dx; u < dx + width; ++u) {
                if (image->valid(at.x() + u, at.y() + v))
                    image->setPixel(at.x() + u, at.y() + v, shaded(colour, light));
            }
        }
    };
    if (top)
        fill(-2, -2, 4, 2, 1.1);
    if (left)
        fill(-2, 0, 2, 3, 0.8);
    if (right)
        fill(0, 0, 2, 3, 0.6);
}
} // namespace

QImage layerPicture(const PartRecorder &recorder, int layer)
{
    const auto first = recorder.passes().begin() + (layer - 1) * int(PartRecorder::passesPerLayer);
    const std::vector<PassRecord> passes(first, first + int(PartRecorder::passesPerLayer));
    Extent extent;
    for (const PassRecord &pass : passes)
        extent.add(pass);
    const double pitch = std::max(1.0, passes[0].columnPitch);
    if (extent.empty()) {
        QImage blank(2 * margin, 2 * margin, QImage::Format_RGB32);
        blank.fill(background);
        return blank;
    }
    const double shrink =
        std::max({1.0, extent.size(0) / pitch / largestPicture, extent.size(1) / dotRow / largestPicture});
    QImage image(int(extent.size(0) / pitch / shrink) + 1 + 2 * margin,
                 int(extent.size(1) / dotRow / shrink) + 1 + 2 * margin, QImage::Format_RGB32);
    image.fill(background);
    for (const PassRecord &pass : passes) {
        forEachDrop(pass, [&](double x, double y, int material) {
            const int column = int(std::lround((x - extent.low[0]) / pitch / shrink)) + margin;
            const int row = int(std::lround((y - extent.low[1]) / dotRow / shrink)) + margin;
            if (image.valid(column, row))
                image.setPixel(column, row, material ? supportColour : structureColour);
        });
    }
    return image;
}

QImage partPicture(const PartRecorder &recorder)
{
    Extent extent;
    for (const PassRecord &pass : recorder.passes())
        extent.add(pass);
    if (extent.empty()) {
        QImage blank(320, 240, QImage::Format_RGB32);
        blank.fill(background);
        return blank;
    }
    const Cells cells(recorder.passes(), extent);
    const int nx = cells.count(0), ny = cells.count(1), nz = cells.count(2);
    QImage image(2 * (nx + ny) + 4 * margin, nx + ny + 3 * nz + 4 * margin, QImage::Format_RGB32);
    image.fill(background);
    for (int z = 0; z < nz; ++z) {
        for (int y = 0; y < ny; ++y) {
            for (int x = 0; x < nx; ++x) {
                if (cells(x, y, z))
                    paintCell(&image, cells, x, y, z,
                              {2 * (x - y + ny) + 2 * margin, x + y + 3 * (nz - z) + 2 * margin});
            }
        }
    }
    return image;
}
