#include "TestMesh.h"

#include <QFile>
#include <QTextStream>
#include <array>

namespace {
struct Box
{
    std::array<double, 3> low, high;
};

void writeBox(QTextStream &out, const Box &box)
{
    // Corner n takes its x, y and z from the bits of n; each face as two triangles, seen from outside.
    static const int faces[12][3] = {{0, 2, 1}, {1, 2, 3}, {4, 5, 6}, {5, 7, 6}, {0, 1, 4}, {1, 5, 4},
                                     {2, 6, 3}, {3, 6, 7}, {0, 4, 2}, {2, 4, 6}, {1, 3, 5}, {3, 7, 5}};
    for (const auto &face : faces) {
        out << "facet normal 0 0 0\nouter loop\n";
        for (int corner : face) {
            out << "vertex";
            for (int axis = 0; axis < 3; ++axis)
                out << ' ' << ((corner >> axis) & 1 ? box.high[axis] : box.low[axis]);
            out << '\n';
        }
        out << "endloop\nendfacet\n";
    }
}

bool writeBoxes(const QString &file, std::initializer_list<Box> boxes)
{
    QFile target(file);
    if (!target.open(QIODevice::WriteOnly))
        return false;
    QTextStream out(&target);
    out << "solid bar\n";
    for (const Box &box : boxes)
        writeBox(out, box);
    out << "endsolid bar\n";
    return true;
}
} // namespace

bool writeTeeBar(const QString &file, double height)
{
    return writeBoxes(file, {{{2, 0, 0}, {4, 200, height / 2}},
                             {{0, 0, height / 2}, {6, 200, height}},
                             {{2, 30, height / 2}, {5, 33, height * 0.9}}});
}

bool writeBar(const QString &file, double height)
{
    return writeBoxes(file, {{{1, 0, 0}, {5, 200, height}}});
}
