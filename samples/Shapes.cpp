#include "Shapes.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>

namespace
{
constexpr double pi = 3.14159265358979323846;

Point cross(const Point &a, const Point &b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

double length(const Point &a)
{
    return std::sqrt(a.x * a.x + a.y * a.y + a.z * a.z);
}

Point unit(const Point &a)
{
    return a * (1 / length(a));
}
} // namespace

Point operator+(const Point &a, const Point &b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

Point operator-(const Point &a, const Point &b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

Point operator*(const Point &a, double factor)
{
    return {a.x * factor, a.y * factor, a.z * factor};
}

void Shapes::quad(const Point &a, const Point &b, const Point &c, const Point &d)
{
    // Where a profile touches its axis one side of the quad has no length.
    if (length(cross(b - a, c - a)) > 1e-12)
        m_triangles.push_back({a, b, c});
    if (length(cross(c - a, d - a)) > 1e-12)
        m_triangles.push_back({a, c, d});
}

void Shapes::revolve(const Profile &profile, int steps, double (*radiusAt)(double angle))
{
    const auto at = [&](size_t n, int step) {
        const double angle = 2 * pi * (step % steps) / steps;
        const auto &[radius, height] = profile[n % profile.size()];
        const double grown = radius * (radiusAt ? radiusAt(angle) : 1);
        return Point{grown * std::cos(angle), grown * std::sin(angle), height};
    };
    for (int step = 0; step < steps; ++step)
        for (size_t n = 0; n < profile.size(); ++n)
            quad(at(n, step), at(n, step + 1), at(n + 1, step + 1), at(n + 1, step));
}

void Shapes::box(const Point &low, const Point &high)
{
    const auto face = [&](double z) {
        return std::vector<Point>{
            {low.x, low.y, z}, {high.x, low.y, z}, {high.x, high.y, z}, {low.x, high.y, z}};
    };
    loft(face(low.z), face(high.z));
}

void Shapes::loft(const std::vector<Point> &below, const std::vector<Point> &above)
{
    const size_t count = below.size();
    for (size_t n = 0; n < count; ++n)
        quad(below[n], below[(n + 1) % count], above[(n + 1) % count], above[n]);
    for (size_t n = 1; n + 1 < count; ++n) {
        m_triangles.push_back({below[0], below[n + 1], below[n]});
        m_triangles.push_back({above[0], above[n], above[n + 1]});
    }
}

void Shapes::sphere(const Point &centre, double radius, int steps)
{
    Profile half;
    for (int n = 0; n <= steps / 2; ++n) {
        const double angle = pi * (2.0 * n / steps - 0.5);
        const bool pole = n == 0 || n == steps / 2;
        half.push_back({pole ? 0 : radius * std::cos(angle), radius * std::sin(angle)});
    }
    const size_t from = size();
    revolve(half, steps);
    transform(from, [&](const Point &point) { return point + centre; });
}

void Shapes::tube(const std::vector<Point> &line, double radius, int steps, bool closed)
{
    const size_t count = line.size();
    std::vector<std::vector<Point>> rings;
    for (size_t n = 0; n < count; ++n) {
        const Point ahead = line[closed ? (n + 1) % count : std::min(n + 1, count - 1)];
        const Point behind = line[closed ? (n + count - 1) % count : (n ? n - 1 : 0)];
        const Point along = unit(ahead - behind);
        // z is never along the bars of these parts for more than a pin; x serves there.
        const Point up = std::abs(along.z) > 0.9 ? Point{1, 0, 0} : Point{0, 0, 1};
        const Point side = unit(cross(along, up)), over = cross(side, along);
        std::vector<Point> ring;
        for (int step = 0; step < steps; ++step) {
            const double angle = 2 * pi * step / steps;
            ring.push_back(line[n] + side * (radius * std::cos(angle)) - over * (radius * std::sin(angle)));
        }
        rings.push_back(ring);
    }
    for (size_t n = 0; n + (closed ? 0 : 1) < count; ++n)
        for (int step = 0; step < steps; ++step) {
            const auto &here = rings[n], &next = rings[(n + 1) % count];
            const int beside = (step + 1) % steps;
            quad(here[step], here[beside], next[beside], next[step]);
        }
    if (closed)
        return;
    for (int step = 1; step + 1 < steps; ++step) {
        m_triangles.push_back({rings.front()[0], rings.front()[step + 1], rings.front()[step]});
        m_triangles.push_back({rings.back()[0], rings.back()[step], rings.back()[step + 1]});
    }
}

bool Shapes::write(const std::string &path) const
{
    // Binary STL: 80 bytes of anything, a count, and for each triangle a normal, three corners and two bytes.
    std::string bytes(84, '\0');
    const uint32_t count = uint32_t(m_triangles.size());
    std::memcpy(&bytes[80], &count, 4);
    const auto put = [&bytes](const Point &point) {
        for (double value : {point.x, point.y, point.z}) {
            const float number = float(value);
            bytes.append(reinterpret_cast<const char *>(&number), 4);
        }
    };
    for (const Triangle &triangle : m_triangles) {
        put(unit(cross(triangle[1] - triangle[0], triangle[2] - triangle[0])));
        for (const Point &corner : triangle)
            put(corner);
        bytes.append(2, '\0');
    }
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), std::streamsize(bytes.size()));
    return bool(file.flush());
}
