#include "Renderer.h"

#include <QMatrix4x4>
#include <QtMath>
#include <algorithm>
#include <cmath>

namespace
{
constexpr int samples = 3;      // per dot and direction, averaged at the end
constexpr float margin = 0.06f; // free border, part of the picture
constexpr float crease = 0.77f; // cosine: faces that meet flatter than 40 degrees are shaded as one surface
const QVector3D wax(0.95f, 0.60f, 0.20f);
const QVector3D ground(0.071f, 0.086f, 0.106f); // the window's own ground

struct Canvas {
    int size;
    std::vector<float> depth;
    std::vector<QVector3D> colour;
    explicit Canvas(int side) : size(side), depth(size_t(side) * side, -INFINITY), colour(size_t(side) * side)
    {
    }
};

/// Turns the part so that z comes towards the viewer, seen from above the front corner.
QMatrix4x4 viewTurn()
{
    QMatrix4x4 turn;
    turn.rotate(-52, 1, 0, 0);
    turn.rotate(-28, 0, 0, 1);
    return turn;
}

QVector3D shade(const QVector3D &normal)
{
    static const QVector3D key = QVector3D(-0.45f, 0.65f, 0.62f).normalized();
    static const QVector3D fill = QVector3D(0.8f, 0.1f, 0.45f).normalized();
    static const QVector3D half = (key + QVector3D(0, 0, 1)).normalized();
    const float light = 0.20f + 0.68f * std::max(0.0f, QVector3D::dotProduct(normal, key)) +
                        0.20f * std::max(0.0f, QVector3D::dotProduct(normal, fill));
    const float shine = 0.35f * std::pow(std::max(0.0f, QVector3D::dotProduct(normal, half)), 40.0f);
    // Light that has gone into wax comes out redder at the rim.
    const float rim = 0.18f * std::pow(1.0f - std::max(0.0f, normal.z()), 3.0f);
    return wax * light + QVector3D(shine + rim, shine + 0.45f * rim, shine);
}

/// Normals at each triangle's corners, averaged over the faces around a vertex that meet there smoothly.
std::vector<std::array<QVector3D, 3>> cornerNormals(const Mesh &mesh, const std::vector<QVector3D> &points)
{
    std::vector<QVector3D> faces(mesh.triangles.size());
    std::vector<std::vector<quint32>> around(points.size());
    for (size_t n = 0; n < faces.size(); ++n) {
        const auto &corner = mesh.triangles[n];
        faces[n] = QVector3D::crossProduct(points[corner[1]] - points[corner[0]],
                                           points[corner[2]] - points[corner[0]]);
        for (quint32 vertex : corner)
            around[vertex].push_back(quint32(n));
    }
    std::vector<std::array<QVector3D, 3>> normals(faces.size());
    for (size_t n = 0; n < faces.size(); ++n) {
        const QVector3D own = faces[n].normalized();
        for (int k = 0; k < 3; ++k) {
            QVector3D sum;
            for (quint32 face : around[mesh.triangles[n][k]])
                if (QVector3D::dotProduct(own, faces[face].normalized()) > crease)
                    sum += faces[face];
            normals[n][k] = sum.isNull() ? own : sum.normalized();
        }
    }
    return normals;
}

void drawTriangle(Canvas &canvas, const QVector3D (&p)[3], const std::array<QVector3D, 3> &normals)
{
    const float area =
        (p[1].x() - p[0].x()) * (p[2].y() - p[0].y()) - (p[1].y() - p[0].y()) * (p[2].x() - p[0].x());
    if (area == 0)
        return;
    const auto clamped = [&canvas](float value) { return std::clamp(int(value), 0, canvas.size - 1); };
    const int left = clamped(std::min({p[0].x(), p[1].x(), p[2].x()}));
    const int right = clamped(std::max({p[0].x(), p[1].x(), p[2].x()}) + 1);
    const int top = clamped(std::min({p[0].y(), p[1].y(), p[2].y()}));
    const int bottom = clamped(std::max({p[0].y(), p[1].y(), p[2].y()}) + 1);
    for (int y = top; y <= bottom; ++y)
        for (int x = left; x <= right; ++x) {
            const float px = x + 0.5f, py = y + 0.5f;
            const float u =
                ((px - p[0].x()) * (p[2].y() - p[0].y()) - (py - p[0].y()) * (p[2].x() - p[0].x())) / area;
            const float v =
                ((p[1].x() - p[0].x()) * (py - p[0].y()) - (p[1].y() - p[0].y()) * (px - p[0].x())) / area;
            if (u < 0 || v < 0 || u + v > 1)
                continue;
            const float z = p[0].z() + u * (p[1].z() - p[0].z()) + v * (p[2].z() - p[0].z());
            const size_t at = size_t(y) * canvas.size + x;
            if (z <= canvas.depth[at])
                continue;
            canvas.depth[at] = z;
            QVector3D normal = (normals[0] * (1 - u - v) + normals[1] * u + normals[2] * v).normalized();
            // A shell turned inside out is lit like any other.
            canvas.colour[at] = shade(normal.z() < 0 ? -normal : normal);
        }
}

Canvas draw(const Mesh &mesh, int size)
{
    Canvas canvas(size * samples);
    const QMatrix4x4 turn = viewTurn();
    std::vector<QVector3D> points;
    for (const QVector3D &vertex : mesh.vertices)
        points.push_back(turn.map(vertex));
    Mesh seen{points, mesh.triangles};
    const Mesh::Bounds box = seen.bounds();
    const float scale = canvas.size * (1 - 2 * margin) / std::max({box.size().x(), box.size().y(), 1e-6f});
    const QVector3D centre = (box.low + box.high) / 2;
    const auto normals = cornerNormals(mesh, points);
    for (size_t n = 0; n < mesh.triangles.size(); ++n) {
        QVector3D corners[3];
        for (int k = 0; k < 3; ++k) {
            const QVector3D at = (points[mesh.triangles[n][k]] - centre) * scale;
            corners[k] = {canvas.size / 2.0f + at.x(), canvas.size / 2.0f - at.y(), at.z()};
        }
        drawTriangle(canvas, corners, normals[n]);
    }
    return canvas;
}

QRgb toRgb(const QVector3D &colour)
{
    // At least 1, so that no dot of the part is pure black.
    const auto byte = [](float value) { return std::clamp(int(value * 255 + 0.5f), 1, 255); };
    return qRgb(byte(colour.x()), byte(colour.y()), byte(colour.z()));
}

/// One picture dot from its samples: `blend` gives the colour from the part's mean colour and its share of
/// the dot.
template <typename Blend> QImage reduce(const Canvas &canvas, Blend blend)
{
    const int size = canvas.size / samples;
    QImage image(size, size, QImage::Format_RGB32);
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x) {
            QVector3D sum;
            int hits = 0;
            for (int n = 0; n < samples * samples; ++n) {
                const size_t at = size_t(y * samples + n / samples) * canvas.size + x * samples + n % samples;
                if (canvas.depth[at] == -INFINITY)
                    continue;
                sum += canvas.colour[at];
                ++hits;
            }
            image.setPixel(x, y, blend(hits ? sum / hits : sum, float(hits) / (samples * samples)));
        }
    return image;
}
} // namespace

QImage renderIcon(const Mesh &mesh, int size)
{
    return reduce(draw(mesh, size), [](const QVector3D &colour, float share) {
        return share < 0.5f ? qRgb(0, 0, 0) : toRgb(colour);
    });
}

QImage renderPreview(const Mesh &mesh, int size)
{
    return reduce(draw(mesh, size), [](const QVector3D &colour, float share) {
        return toRgb(ground * (1 - share) + colour * share);
    });
}
