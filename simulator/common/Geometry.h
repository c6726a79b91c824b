#pragma once
// The measures of the simulated machine, in micrometres unless the name says otherwise. docs/simulator.md
// tells where the delivered configuration depends on them.

namespace geometry
{
constexpr int heads = 3;
constexpr int headRows = 440; ///< nozzle rows of one head
constexpr int barRows = heads * headRows;
constexpr double nozzlePitch = 168.8;
constexpr double micrometresPerInch = 25400.0;

// The bed: where column 0 and row 0 of a layer picture belong.
constexpr double bedOriginX = 149999.0;
constexpr double bedOriginY = 12000.0;

// X. The sweep's ends are where the start move turns; beyond the far end stands the ink station.
constexpr double xHome = 20000.0;
constexpr double xEnd = 700000.0;
constexpr double sweepNear = 20000.0;
constexpr double sweepFar = 550000.0;
constexpr double inkStation = 690000.0;
constexpr double inkStationReach =
    3000.0; ///< how near the carriage must stand for the magnet to hold the stack
// Where the coupled stack stands under the heads while ink is pressed; Z there holds the bed clear of it.
constexpr double pressX = 640000.0;
constexpr double pressZ = 110000.0;
constexpr double pressReach = 5000.0;
/// Z at which a container stands under the heads when a person purges them.
constexpr double containerZ = 80000.0;
constexpr double xAcceleration = 6.0e6; ///< per second squared

constexpr double yEnd = 60000.0;
constexpr double ySpeed = 100.0e3;
constexpr double yAcceleration = 2.0e6;
constexpr double zEnd = 150000.0;
constexpr double zSpeed = 20.0e3;
constexpr double zAcceleration = 0.5e6;

// The heads on the carriage, and the time a drop falls: it lands further on in the direction of travel.
constexpr double headMountX[heads] = {0.0, 2540.0, 5080.0};
constexpr double dropFlightSeconds = 0.2e-3;

/// The most that the bed may lift the part above the leveller's plane: one layer, which the next sweep
/// shaves.
constexpr double liftLimit = 100.0;

/// Rows of the print bar as they are screwed in: first row and overlap with the head before, as a head's
/// place is told to the boards.
struct MountedHead {
    int firstRow;
    int overlap;
};
constexpr MountedHead mountedHeads[heads] = {{1, 1}, {443, 5}, {881, 5}};
} // namespace geometry
