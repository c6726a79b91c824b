#pragma once
// Everything that warms, cools or holds pressure: the boards' heated zones, the head heaters, the air system.
// Each quantity has a name, by which faults reach its sensor.

#include "Lag.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <random>

class Climate
{
public:
    Climate();

    /// Zones 1 to 7 that a board reports under a read command.
    void setZone(int board, int readCommand, int zone, int degrees, double now);
    int zone(int board, int readCommand, int zone, double now);
    /// Heads 1 to 3, sensors 1 to 3.
    Lag &heater(int head, int sensor);
    /// Hold pressure of a head in the unit of the boards; it is negative. Material 0 structure, 1 support.
    Lag &holdPressure(int material, int head);
    Lag &positivePressure() { return m_quantities["pressure.positive"]; }
    Lag &leveller() { return m_quantities["leveller"]; }

    /// "zone.3.31.1", "head.1.1", "pressure.structure.1", "pressure.positive", "leveller"; null when there is
    /// none.
    Lag *find(const QString &name);
    QStringList names() const { return m_quantities.keys(); }
    double reading(Lag &quantity, double now);
    /// Sensors tremble by this much, evenly either way.
    void setNoise(double amplitude) { m_noise = amplitude; }
    void setSeed(unsigned seed) { m_random.seed(seed); }

private:
    Lag &zoneLag(int board, int readCommand, int zone);

    QMap<QString, Lag> m_quantities;
    double m_noise = 0;
    std::mt19937 m_random{1};
};
