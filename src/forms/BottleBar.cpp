#include "forms/BottleBar.h"

#include "links/CardInfo.h"

#include <QProgressBar>
#include <limits>

BottleBar bottleBar(const CardInfo &bottle, quint32 fullGrams)
{
    const quint32 widest = std::numeric_limits<int>::max(); // a damaged card may tell more
    const quint32 total = qMin(bottle.weight ? bottle.weight : fullGrams, widest);
    quint32 rest = bottle.rest_weight;
    if (rest != 0)
        rest = qMax(rest, total / 100);
    return {int(total), int(qMin(rest, total))};
}

void showBar(QProgressBar *bar, const BottleBar &level)
{
    bar->setRange(0, level.maximum);
    bar->setValue(level.value);
}
