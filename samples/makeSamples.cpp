// Makes the sample parts: makeSamples FOLDER writes ring.stl and calibration.stl, in mm.
#include "Shapes.h"

#include <cmath>
#include <cstdio>

namespace
{
constexpr double pi = 3.14159265358979323846;

// ---- ring: lies flat, finger hole upright, 7 mm high ----
constexpr double ringHeight = 7, ringMiddle = ringHeight / 2;
constexpr double channelRadius = 9.25; // floor of the channel around the band, in which the ornament lies

/// Band with a comfort-fit inside and a channel around it whose upper lip is an undercut.
void addBand(Shapes &ring)
{
    const Profile band = {{8.4, 0},
                          {9.5, 0},
                          {9.9, 0.25},
                          {9.9, 0.8},
                          {9.6, 1.0},
                          {9.25, 1.1},
                          {channelRadius, ringMiddle},
                          {9.25, 5.9},
                          {9.6, 6.0},
                          {9.9, 6.2},
                          {9.9, 6.75},
                          {9.5, ringHeight},
                          {8.4, ringHeight},
                          {8.15, 6.4},
                          {8.02, 5},
                          {8.0, ringMiddle},
                          {8.02, 2},
                          {8.15, 0.6}};
    ring.revolve(band, 360);
}

/// Two ropes of two strands each, one along either edge of the channel.
void addRopes(Shapes &ring)
{
    constexpr int steps = 720, twists = 36;
    for (double height : {1.75, ringHeight - 1.75})
        for (double strand : {0.0, pi}) {
            std::vector<Point> line;
            for (int step = 0; step < steps; ++step) {
                const double around = 2 * pi * step / steps, twist = twists * around + strand;
                const double radius = 9.55 + 0.22 * std::cos(twist);
                line.push_back(
                    {radius * std::cos(around), radius * std::sin(around), height + 0.22 * std::sin(twist)});
            }
            ring.tube(line, 0.27, 12, true);
        }
}

/// A row of beads between the ropes, left out where the stone sits.
void addBeads(Shapes &ring)
{
    constexpr int beads = 48;
    for (int n = 0; n < beads; ++n) {
        const double around = 2 * pi * (n + 0.5) / beads;
        if (std::cos(around) < 0.93)
            ring.sphere({9.5 * std::cos(around), 9.5 * std::sin(around), ringMiddle}, n % 4 ? 0.42 : 0.62,
                        20);
    }
}

/// The setting, its axis along +x: a cup with a seat for a stone of 5 mm, a bearing groove cut under its
/// edge, a collar at its foot and six prongs that lean in over the girdle.
void addSetting(Shapes &ring)
{
    const auto outward = [](const Point &p) { return Point{p.z, p.y, ringMiddle - p.x}; };
    const size_t from = ring.size();
    const Profile cup = {{0, 8.6},     {2.1, 8.6},  {2.1, 9.6},   {2.4, 9.8},  {2.4, 10.1},
                         {2.15, 10.3}, {3.1, 12.2}, {2.45, 12.3}, {2.3, 11.9}, {2.55, 11.75},
                         {2.55, 11.5}, {2.2, 11.4}, {0.6, 10.2},  {0, 10.2}};
    ring.revolve(cup, 120);
    for (int n = 0; n < 6; ++n) {
        const double around = pi / 3 * n + pi / 6, c = std::cos(around), s = std::sin(around);
        const std::vector<Point> prong = {{2.2 * c, 2.2 * s, 9.9},
                                          {2.85 * c, 2.85 * s, 11.6},
                                          {2.85 * c, 2.85 * s, 12.5},
                                          {2.45 * c, 2.45 * s, 12.95}};
        ring.tube(prong, 0.36, 16, false);
        ring.sphere(prong.back(), 0.36, 16);
        ring.sphere(prong[2], 0.36, 16);
    }
    ring.transform(from, outward);
}

Shapes makeRing()
{
    Shapes ring;
    addBand(ring);
    addRopes(ring);
    addBeads(ring);
    addSetting(ring);
    return ring;
}

// ---- calibration part: 25 x 25 x 8 mm ----
constexpr double side = 25, plate = 1.2, top = 8;
constexpr double sunk = 0.3; // how deep features reach into the plate

void addPin(Shapes &part, double x, double y, double diameter, double height)
{
    part.tube({{x, y, plate - sunk}, {x, y, height}}, diameter / 2, 32, false);
}

/// Walls from 0.1 to 0.8 mm thick, pins from 0.2 to 1.2 mm, and pipes with bores from 0.3 to 1.5 mm.
void addFineFeatures(Shapes &part)
{
    const double walls[] = {0.1, 0.15, 0.2, 0.3, 0.4, 0.6, 0.8};
    const double pins[] = {0.2, 0.3, 0.4, 0.5, 0.6, 0.8, 1.0, 1.2};
    const double bores[] = {0.3, 0.5, 0.8, 1.0, 1.5};
    double x = 1;
    for (double wall : walls) {
        part.box({x, 1, plate - sunk}, {x + wall, 7, 6});
        x += wall + 1.1;
    }
    x = 1.2;
    for (double pin : pins) {
        addPin(part, x, 9.5, pin, top);
        x += pin + 1.1;
    }
    x = 13.2;
    for (double bore : bores) {
        const size_t from = part.size();
        const double inner = bore / 2, outer = inner + 0.4;
        part.revolve({{inner, plate - sunk}, {outer, plate - sunk}, {outer, 4}, {inner, 4}}, 48);
        part.transform(from, [&](const Point &p) { return p + Point{x + outer, 2.8, 0}; });
        x += 2 * outer + 0.5;
    }
}

/// Slabs that lean out by 30, 45 and 60 degrees from upright.
void addLeaningSlabs(Shapes &part)
{
    double x = 1.5;
    for (double degrees : {30.0, 45.0, 60.0}) {
        const double shift = std::min((top - plate) * std::tan(degrees * pi / 180), 8.0);
        const double height = plate + shift / std::tan(degrees * pi / 180);
        const auto foot = [x](double y, double z) {
            return std::vector<Point>{{x, y, z}, {x + 2.5, y, z}, {x + 2.5, y + 1, z}, {x, y + 1, z}};
        };
        part.loft(foot(12.5, plate - sunk), foot(12.5 + shift, height));
        x += 3.6;
    }
}

/// A bridge, a mushroom with a round cap, a ball on a thin stalk and a staircase that hangs from a wall.
void addOverhangs(Shapes &part)
{
    part.box({14, 6, plate - sunk}, {15, 8, 5});
    part.box({22.5, 6, plate - sunk}, {23.5, 8, 5});
    part.box({14, 6, 4.4}, {23.5, 8, 5.2});
    const size_t from = part.size();
    part.revolve(
        {{0, plate - sunk}, {0.8, plate - sunk}, {0.8, 4.5}, {3.2, 5.0}, {3.2, 5.5}, {2.3, 6.6}, {0, 7.2}},
        72);
    part.transform(from, [](const Point &p) { return p + Point{17.5, 13.5, 0}; });
    addPin(part, 22.5, 12, 0.6, 5);
    part.sphere({22.5, 12, 6}, 1.5, 48);
    part.box({14, 23, plate - sunk}, {24, 24, top});
    for (int step = 0; step < 5; ++step)
        part.box({14.0 + 2 * step, 22.0 - 0.7 * step, 7.0 - step}, {16.0 + 2 * step, 23.3, 7.5 - step});
}

Shapes makeCalibration()
{
    Shapes part;
    part.box({0, 0, 0}, {side, side, plate});
    addFineFeatures(part);
    addLeaningSlabs(part);
    addOverhangs(part);
    return part;
}
} // namespace

int main(int argc, char **argv)
{
    const std::string folder = argc > 1 ? argv[1] : ".";
    if (makeRing().write(folder + "/ring.stl") && makeCalibration().write(folder + "/calibration.stl"))
        return 0;
    std::fprintf(stderr, "makeSamples: cannot write into %s\n", folder.c_str());
    return 1;
}
