#include "material/InkLevels.h"

#include "engine/HibLibrary.h"
#include "platform/Log.h"

#include <QStringList>

namespace
{
constexpr double lowLevelMargin = 20000.0; ///< below full by which a tank counts as low
} // namespace

InkLevels &inkLevels()
{
    static InkLevels levels;
    return levels;
}

QString InkLevels::key(int tank)
{
    return QStringLiteral("Nozzle%1_%2").arg(tank / 2 + 1).arg(tank % 2 == 0 ? 1 : 3);
}

bool InkLevels::read(int head)
{
    int support = 0, second = 0, structure = 0, fourth = 0;
    const int result = lockHibGetHeadInkLevels(head, &support, &second, &structure, &fourth);
    const size_t tank = size_t(2 * (head - 1));
    m_levels[tank] = support;
    m_levels[tank + 1] = structure;
    return result == 0;
}

void InkLevels::fill(QJsonObject &levels) const
{
    for (int tank = 0; tank < tanks; ++tank)
        levels.insert(key(tank), level(tank));
}

QString InkLevels::text() const
{
    QStringList values;
    for (int tank = 0; tank < tanks; ++tank)
        values << QString::number(level(tank));
    return values.join(QLatin1Char(','));
}

void InkLevels::setFull(const QJsonObject &full)
{
    MutexLock lock(m_fullMutex);
    m_nozzleFull = full;
}

QJsonObject InkLevels::full() const
{
    MutexLock lock(m_fullMutex);
    return m_nozzleFull;
}

bool InkLevels::checkHeadInkLevels()
{
    const QJsonObject fullValues = full();
    bool low = false;
    for (int tank = 0; tank < tanks; ++tank)
        low = low || level(tank) < fullValues.value(key(tank)).toDouble() - lowLevelMargin;
    if (m_low.exchange(low) != low)
        LOG_WARNING(QStringLiteral(" hd:%1").arg(text()));
    return low;
}
