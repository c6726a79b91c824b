#pragma once
// A triangle mesh, read through the mesh library from STL, OBJ, PLY or 3MF.
#include <QByteArray>
#include <QString>
#include <QVector3D>
#include <array>
#include <vector>

struct Mesh {
    using Triangle = std::array<quint32, 3>;
    std::vector<QVector3D> vertices; ///< mm
    std::vector<Triangle> triangles; ///< counter-clockwise seen from outside

    struct Bounds {
        QVector3D low, high;
        QVector3D size() const { return high - low; }
    };
    /// Of a mesh that has triangles.
    Bounds bounds() const;
    void scale(float factor);
    void move(const QVector3D &by);
    /// The mesh section of a model file.
    QByteArray encode() const;
};

/// Reads the file; false with a text for the user when it is unreadable, empty or has points that are no
/// numbers.
bool readMesh(const QString &path, Mesh *mesh, QString *error);
