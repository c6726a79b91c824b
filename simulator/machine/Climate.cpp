#include "Climate.h"

#include "common/Geometry.h"

namespace
{
// Machine seconds: a cold machine is ready to print after some three minutes.
constexpr double zoneTau = 60;
constexpr double heaterTau = 45;
constexpr double pressureTau = 4;
constexpr double levellerTau = 0.25;
constexpr double ambient = 25;
constexpr int holdAtStart = -500;
constexpr int positiveAtStart = 300;

struct ZoneGroup {
    int board;
    int readCommand;
};
constexpr ZoneGroup zoneGroups[] = {{3, 0x31}, {3, 0x32}, {3, 0x33}, {3, 0x34}, {6, 0x41},
                                    {6, 0x43}, {6, 0x42}, {5, 0x32}, {5, 0x71}};
constexpr int zones = 7;

QString zoneName(int board, int readCommand, int zone)
{
    return QStringLiteral("zone.%1.%2.%3").arg(board).arg(readCommand, 2, 16, QLatin1Char('0')).arg(zone);
}

QString pressureName(int material, int head)
{
    return QStringLiteral("pressure.%1.%2").arg(material ? "support" : "structure").arg(head);
}
} // namespace

Climate::Climate()
{
    for (const ZoneGroup &group : zoneGroups) {
        for (int zone = 1; zone <= zones; ++zone)
            m_quantities[zoneName(group.board, group.readCommand, zone)] = Lag(ambient, zoneTau);
    }
    for (int head = 1; head <= geometry::heads; ++head) {
        for (int sensor = 1; sensor <= 3; ++sensor)
            m_quantities[QStringLiteral("head.%1.%2").arg(head).arg(sensor)] = Lag(ambient, heaterTau);
        for (int material : {0, 1})
            m_quantities[pressureName(material, head)] = Lag(holdAtStart, pressureTau);
    }
    m_quantities["pressure.positive"] = Lag(positiveAtStart, pressureTau);
    m_quantities["leveller"] = Lag(0, levellerTau);
}

Lag &Climate::zoneLag(int board, int readCommand, int zone)
{
    return m_quantities[zoneName(board, readCommand, zone)];
}

/// A heater that is set to 0 is off.
void Climate::setZone(int board, int readCommand, int zone, int degrees, double now)
{
    zoneLag(board, readCommand, zone).setTarget(degrees > 0 ? degrees : ambient, now);
}

int Climate::zone(int board, int readCommand, int zone, double now)
{
    const double degrees = reading(zoneLag(board, readCommand, zone), now);
    return int(std::lround(std::min(255.0, std::max(0.0, degrees))));
}

Lag &Climate::heater(int head, int sensor)
{
    return m_quantities[QStringLiteral("head.%1.%2").arg(head).arg(sensor)];
}

Lag &Climate::holdPressure(int material, int head)
{
    return m_quantities[pressureName(material, head)];
}

Lag *Climate::find(const QString &name)
{
    const auto found = m_quantities.find(name);
    return found == m_quantities.end() ? nullptr : &*found;
}

double Climate::reading(Lag &quantity, double now)
{
    if (m_noise <= 0)
        return quantity.reading(now);
    return quantity.reading(now) + std::uniform_real_distribution<double>(-m_noise, m_noise)(m_random);
}
