#pragma once
// Closed shells for the sample parts. A part is a heap of shells that may overlap: the printer builds their
// union.
#include <array>
#include <string>
#include <vector>

struct Point {
    double x = 0, y = 0, z = 0;
};
Point operator+(const Point &a, const Point &b);
Point operator-(const Point &a, const Point &b);
Point operator*(const Point &a, double factor);

/// A closed line in the half plane (distance from the axis, height along it), counter-clockwise.
using Profile = std::vector<std::array<double, 2>>;

class Shapes
{
public:
    /// Turns the profile about the z axis.
    void revolve(const Profile &profile, int steps, double (*radiusAt)(double angle) = nullptr);
    void box(const Point &low, const Point &high);
    /// A body with the same number of points below and above, both counter-clockwise seen from above.
    void loft(const std::vector<Point> &below, const std::vector<Point> &above);
    void sphere(const Point &centre, double radius, int steps);
    /// A round bar along the line; a closed line gives a closed bar, an open one gets flat ends.
    void tube(const std::vector<Point> &line, double radius, int steps, bool closed);

    /// Moves everything added since `from` by a function.
    template <typename Map> void transform(size_t from, Map map)
    {
        for (size_t n = from; n < m_triangles.size(); ++n)
            for (Point &corner : m_triangles[n])
                corner = map(corner);
    }
    size_t size() const { return m_triangles.size(); }
    /// Binary STL; false when it cannot be written.
    bool write(const std::string &path) const;

private:
    using Triangle = std::array<Point, 3>;
    void quad(const Point &a, const Point &b, const Point &c, const Point &d);
    std::vector<Triangle> m_triangles;
};
