#include "PrintedLayer.h"

#include <cmath>

namespace
{
constexpr double tolerance = 0.25; ///< of the way to the next place; a drop further off belongs to neither

/// Nearest whole number, or -1 when the value is not near one.
int place(double value)
{
    const double nearest = std::round(value);
    return std::fabs(value - nearest) <= tolerance && nearest >= 0 && nearest < 1e6 ? int(nearest) : -1;
}

void addPlane(const PassRecord &pass, const SparsePlane &plane, const ModelSettings &settings,
              LayerBits *bits, qint64 *astray)
{
    int knownRow = -1, head = -1, row = -1;
    plane.forEachDot([&](int pictureRow, int pictureColumn) {
        if (pictureRow != knownRow) {
            knownRow = pictureRow;
            head = pass.headOfRow(pictureRow);
            row = head < 0
                      ? -1
                      : place((pass.dotY(head, pictureRow) - geometry::bedOriginY) / settings.rowPitch());
        }
        if (head < 0)
            return; // no nozzle stands there: nothing was fired
        const double x = pass.dotX(head, pictureColumn) - geometry::bedOriginX;
        const int column = place(x / settings.columnPitch());
        const bool onPicture = row >= 0 && row < bits->height() && column >= 0 && column < settings.width();
        if (!onPicture || !bits->set(row, column))
            ++*astray;
    });
}
} // namespace

PrintedLayer putTogether(const PassRecord *first, const ModelSettings &settings)
{
    PrintedLayer layer{LayerBits(settings.width(), settings.pixelsY),
                       LayerBits(settings.width(), settings.pixelsY), 0};
    for (const PassRecord *pass = first; pass != first + passesPerLayer; ++pass) {
        addPlane(*pass, pass->structure, settings, &layer.structure, &layer.astray);
        addPlane(*pass, pass->support, settings, &layer.support, &layer.astray);
    }
    return layer;
}
