#include "MeshSlicer.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace
{
constexpr int layersPerSlab =
    16;                      // bounds the lists' memory; a layer looks at no more triangles than its slab's
constexpr int clearance = 2; // free cells around the part in its window, for what looks at neighbours
} // namespace

MeshSlicer::MeshSlicer(const Model &model) : m_model(model)
{
    place();
    sortIntoSlabs();
}

double MeshSlicer::cutHeight(int layer) const
{
    return (layer - m_model.raftLayers - 0.5) * m_model.layerHeight;
}

void MeshSlicer::place()
{
    double low[2] = {INFINITY, INFINITY}, high[2] = {-INFINITY, -INFINITY};
    for (const Model::Triangle &triangle : m_model.triangles)
        for (uint32_t corner : triangle)
            for (int axis = 0; axis < 2; ++axis) {
                low[axis] = std::min(low[axis], double(m_model.points[corner][axis]));
                high[axis] = std::max(high[axis], double(m_model.points[corner][axis]));
            }
    const int blank = m_model.extraBlankPixel;
    const auto column = [&](double x) {
        return blank + int(std::clamp(std::floor(x / m_model.columnPitch), 0.0, double(m_model.pixelsX - 1)));
    };
    const auto row = [&](double y) {
        return int(std::clamp(std::floor(y / m_model.rowPitch), 0.0, double(m_model.pixelsY - 1)));
    };
    m_window.firstWord = std::max(column(low[0]) - clearance, 0) / 64;
    m_window.words = (column(high[0]) + clearance) / 64 + 1 - m_window.firstWord;
    m_window.firstRow = std::max(row(low[1]) - clearance, 0);
    m_window.rows = std::min(row(high[1]) + clearance + 1, m_model.pixelsY) - m_window.firstRow;
}

void MeshSlicer::sortIntoSlabs()
{
    m_slabs.resize(size_t(m_model.layerCnt / layersPerSlab + 1));
    const int last = int(m_slabs.size()) - 1;
    const auto slab = [&](float z) {
        const double layer = std::floor(double(z) / m_model.layerHeight) + m_model.raftLayers;
        return int(std::clamp(layer, 0.0, 1e6)) / layersPerSlab;
    };
    for (uint32_t n = 0; n < m_model.triangles.size(); ++n) {
        const Model::Triangle &t = m_model.triangles[n];
        const float z[3] = {m_model.points[t[0]][2], m_model.points[t[1]][2], m_model.points[t[2]][2]};
        const int first = slab(*std::min_element(z, z + 3));
        // One layer up: a cut lies half a layer above the layer's lower face, and the count starts at 1.
        const int end = std::min(slab(*std::max_element(z, z + 3) + float(m_model.layerHeight)), last);
        for (int at = first; at <= end; ++at)
            m_slabs[size_t(at)].push_back(n);
    }
}

void MeshSlicer::slice(int layer, int firstRow, int endRow, Bits *bits) const
{
    std::fill(bits->begin() + std::ptrdiff_t(firstRow) * m_window.words,
              bits->begin() + std::ptrdiff_t(endRow) * m_window.words, 0);
    const double z = cutHeight(layer);
    if (z < 0)
        return;
    Rows rows{firstRow, endRow, std::vector<std::vector<Crossing>>(size_t(endRow - firstRow))};
    for (uint32_t n : m_slabs[size_t(layer / layersPerSlab)])
        cut(m_model.triangles[n], z, &rows);
    for (int row = firstRow; row < endRow; ++row)
        fillRow(&rows.crossings[size_t(row - firstRow)], bits->data() + size_t(row) * m_window.words);
}

void MeshSlicer::cut(const Model::Triangle &triangle, double z, Rows *rows) const
{
    // A corner at the height of the cut counts as above it, for every triangle alike: so no cut runs through
    // a corner and contours stay closed.
    std::array<double, 2> entry{}, exit{};
    int crossed = 0;
    for (int edge = 0; edge < 3; ++edge) {
        const Model::Point *a = &m_model.points[triangle[size_t(edge)]];
        const Model::Point *b = &m_model.points[triangle[size_t(edge + 1) % 3]];
        const bool aAbove = double((*a)[2]) >= z, bAbove = double((*b)[2]) >= z;
        if (aAbove == bAbove)
            continue;
        ++crossed;
        auto &end = aAbove ? exit : entry;
        // Both triangles at an edge must find the same point, so it is always taken from below.
        if (aAbove)
            std::swap(a, b);
        const double t = (z - double((*a)[2])) / (double((*b)[2]) - double((*a)[2]));
        for (size_t axis = 0; axis < 2; ++axis)
            end[axis] = double((*a)[axis]) + t * (double((*b)[axis]) - double((*a)[axis]));
        end[0] = end[0] / m_model.columnPitch + m_model.extraBlankPixel - 64.0 * m_window.firstWord;
        end[1] = end[1] / m_model.rowPitch - m_window.firstRow;
    }
    if (crossed == 2)
        addSegment(entry, exit, 1, rows);
}

void MeshSlicer::addSegment(std::array<double, 2> from, std::array<double, 2> to, int direction,
                            Rows *rows) const
{
    if (from[1] > to[1]) {
        std::swap(from, to);
        direction = -direction;
    }
    const auto firstBelow = [&](double y) {
        return int(std::ceil(std::clamp(y - 0.5, double(rows->first), double(rows->end))));
    };
    const int end = firstBelow(to[1]);
    const double slope = (to[0] - from[0]) / (to[1] - from[1]);
    for (int row = firstBelow(from[1]); row < end; ++row)
        rows->crossings[size_t(row - rows->first)].push_back(
            {from[0] + (row + 0.5 - from[1]) * slope, direction});
}

void MeshSlicer::fillRow(std::vector<Crossing> *crossings, uint64_t *row) const
{
    std::sort(crossings->begin(), crossings->end(), [](const Crossing &a, const Crossing &b) {
        return a.x != b.x ? a.x < b.x : a.direction < b.direction;
    });
    int balance = 0;
    for (const Crossing &crossing : *crossings)
        balance += crossing.direction;
    // Shells that overlap make a union. Where the surface has a hole the directions do not cancel out: there
    // every second crossing is taken as a way out.
    int winding = 0;
    for (size_t n = 0; n + 1 < crossings->size(); ++n) {
        winding = balance == 0 ? winding + (*crossings)[n].direction : 1 - winding;
        if (winding != 0)
            fillSpan((*crossings)[n].x, (*crossings)[n + 1].x, row);
    }
}

void MeshSlicer::fillSpan(double from, double to, uint64_t *row) const
{
    // Columns whose centres lie in the span, inside the printable part of the picture.
    const double shift = 64.0 * m_window.firstWord;
    const double left = std::max(0.0, m_model.extraBlankPixel - shift);
    const double right = std::min(64.0 * m_window.words, m_model.extraBlankPixel + m_model.pixelsX - shift);
    const int first = int(std::ceil(std::clamp(from - 0.5, left, right)));
    const int end = int(std::ceil(std::clamp(to - 0.5, left, right)));
    if (first >= end)
        return;
    const int firstWord = first / 64, lastWord = (end - 1) / 64;
    const uint64_t head = ~uint64_t(0) << (first % 64), tail = ~uint64_t(0) >> (63 - (end - 1) % 64);
    if (firstWord == lastWord) {
        row[firstWord] |= head & tail;
        return;
    }
    row[firstWord] |= head;
    std::fill(row + firstWord + 1, row + lastWord, ~uint64_t(0));
    row[lastWord] |= tail;
}
