#include "Volumes.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr int columnsAcross = 400; // of the longer side: within a percent for parts of ordinary shape

struct Crossing {
    float z;
    int direction; // +1 where a walk upwards enters through this surface, -1 where it leaves
};

struct Grid {
    float x0, y0, step;
    int width, height;
    std::vector<std::vector<Crossing>> columns;
};

/// Adds the crossings of the vertical lines through the cell centres with one triangle.
void cross(Grid &grid, const QVector3D &a, const QVector3D &b, const QVector3D &c)
{
    const auto cellsFrom = [](float low, float origin, float step) {
        return int(std::ceil((low - origin) / step - 0.5f));
    };
    const float area = (b.x() - a.x()) * (c.y() - a.y()) - (b.y() - a.y()) * (c.x() - a.x());
    if (area == 0)
        return;
    const int firstRow = std::max(0, cellsFrom(std::min({a.y(), b.y(), c.y()}), grid.y0, grid.step));
    const int endRow = std::min(grid.height, cellsFrom(std::max({a.y(), b.y(), c.y()}), grid.y0, grid.step));
    const QVector3D corners[3] = {a, b, c};
    for (int row = firstRow; row < endRow; ++row) {
        const float y = grid.y0 + (row + 0.5f) * grid.step;
        float from = INFINITY, to = -INFINITY;
        for (int edge = 0; edge < 3; ++edge) {
            QVector3D p = corners[edge], q = corners[(edge + 1) % 3];
            if ((p.y() <= y) == (q.y() <= y))
                continue;
            if (p.y() > q.y())
                std::swap(p, q); // both neighbours of an edge compute the same point
            const float x = p.x() + (y - p.y()) / (q.y() - p.y()) * (q.x() - p.x());
            from = std::min(from, x);
            to = std::max(to, x);
        }
        if (from > to)
            continue;
        const int first = std::max(0, cellsFrom(from, grid.x0, grid.step));
        const int end = std::min(grid.width, cellsFrom(to, grid.x0, grid.step));
        for (int column = first; column < end; ++column) {
            const float x = grid.x0 + (column + 0.5f) * grid.step;
            const float u = ((x - a.x()) * (c.y() - a.y()) - (y - a.y()) * (c.x() - a.x())) / area;
            const float v = ((b.x() - a.x()) * (y - a.y()) - (b.y() - a.y()) * (x - a.x())) / area;
            const float z = a.z() + u * (b.z() - a.z()) + v * (c.z() - a.z());
            grid.columns[size_t(row) * grid.width + column].push_back({z, area > 0 ? -1 : 1});
        }
    }
}

/// Length inside the part along one column; the crossings come sorted by z.
double insideLength(const std::vector<Crossing> &crossings)
{
    double length = 0;
    int winding = 0;
    for (size_t n = 0; n + 1 < crossings.size(); ++n) {
        winding += crossings[n].direction;
        if (winding != 0)
            length += crossings[n + 1].z - crossings[n].z;
    }
    return length;
}
} // namespace

Volumes measureVolumes(const Mesh &mesh)
{
    const Mesh::Bounds box = mesh.bounds();
    const float across = std::max(box.size().x(), box.size().y());
    Grid grid{box.low.x(), box.low.y(), std::max(across / columnsAcross, 1e-4f), 0, 0, {}};
    grid.width = int(std::ceil(box.size().x() / grid.step)) + 1;
    grid.height = int(std::ceil(box.size().y() / grid.step)) + 1;
    grid.columns.resize(size_t(grid.width) * grid.height);
    for (const Mesh::Triangle &triangle : mesh.triangles)
        cross(grid, mesh.vertices[triangle[0]], mesh.vertices[triangle[1]], mesh.vertices[triangle[2]]);
    const double cell = double(grid.step) * grid.step;
    Volumes volumes;
    for (std::vector<Crossing> &column : grid.columns) {
        if (column.size() < 2)
            continue;
        std::sort(column.begin(), column.end(),
                  [](const Crossing &a, const Crossing &b) { return a.z < b.z; });
        const double inside = insideLength(column);
        volumes.structure += cell * inside;
        volumes.support += cell * std::max(0.0, double(column.back().z) - inside);
    }
    return volumes;
}
