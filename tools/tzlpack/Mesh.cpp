#include "Mesh.h"

#include <QFileInfo>
#include <QtEndian>
#include <assimp/Importer.hpp>
#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <cmath>

namespace
{
void appendNode(const aiScene &scene, const aiNode &node, const aiMatrix4x4 &parent, Mesh *mesh)
{
    const aiMatrix4x4 place = parent * node.mTransformation;
    for (unsigned index = 0; index < node.mNumMeshes; ++index) {
        const aiMesh &part = *scene.mMeshes[node.mMeshes[index]];
        const quint32 base = quint32(mesh->vertices.size());
        for (unsigned n = 0; n < part.mNumVertices; ++n) {
            const aiVector3D point = place * part.mVertices[n];
            mesh->vertices.emplace_back(point.x, point.y, point.z);
        }
        for (unsigned n = 0; n < part.mNumFaces; ++n) {
            const aiFace &face = part.mFaces[n];
            if (face.mNumIndices == 3)
                mesh->triangles.push_back(
                    {base + face.mIndices[0], base + face.mIndices[1], base + face.mIndices[2]});
        }
    }
    for (unsigned child = 0; child < node.mNumChildren; ++child)
        appendNode(scene, *node.mChildren[child], place, mesh);
}

bool isFinite(const QVector3D &point)
{
    return std::isfinite(point.x()) && std::isfinite(point.y()) && std::isfinite(point.z());
}
} // namespace

Mesh::Bounds Mesh::bounds() const
{
    // Only points that a triangle uses: a stray point has no extent.
    Bounds box{vertices[triangles[0][0]], vertices[triangles[0][0]]};
    for (const Triangle &triangle : triangles)
        for (quint32 corner : triangle)
            for (int axis = 0; axis < 3; ++axis) {
                box.low[axis] = std::min(box.low[axis], vertices[corner][axis]);
                box.high[axis] = std::max(box.high[axis], vertices[corner][axis]);
            }
    return box;
}

void Mesh::scale(float factor)
{
    for (QVector3D &vertex : vertices)
        vertex *= factor;
}

void Mesh::move(const QVector3D &by)
{
    for (QVector3D &vertex : vertices)
        vertex += by;
}

QByteArray Mesh::encode() const
{
    QByteArray bytes(int(8 + 12 * vertices.size() + 12 * triangles.size()), Qt::Uninitialized);
    char *at = bytes.data();
    const auto put = [&at](quint32 value) {
        qToLittleEndian<quint32>(value, at);
        at += 4;
    };
    const auto putFloat = [&at](float value) {
        qToLittleEndian<float>(value, at);
        at += 4;
    };
    put(quint32(vertices.size()));
    put(quint32(triangles.size()));
    for (const QVector3D &vertex : vertices)
        for (int axis = 0; axis < 3; ++axis)
            putFloat(vertex[axis]);
    for (const Triangle &triangle : triangles)
        for (quint32 corner : triangle)
            put(corner);
    return bytes;
}

bool readMesh(const QString &path, Mesh *mesh, QString *error)
{
    static const QStringList formats{"stl", "obj", "ply", "3mf"};
    const auto fail = [&](const QString &why) {
        *error = path + ": " + why;
        return false;
    };
    if (!QFileInfo(path).isFile())
        return fail("no such file");
    if (!formats.contains(QFileInfo(path).suffix().toLower()))
        return fail("not one of STL, OBJ, PLY, 3MF");
    Assimp::Importer importer;
    importer.SetPropertyInteger(AI_CONFIG_PP_SBP_REMOVE, aiPrimitiveType_POINT | aiPrimitiveType_LINE);
    const aiScene *scene = importer.ReadFile(
        path.toStdString(), aiProcess_Triangulate | aiProcess_SortByPType | aiProcess_JoinIdenticalVertices);
    if (!scene || !scene->mRootNode)
        return fail(QString("cannot be read: ") + importer.GetErrorString());
    *mesh = Mesh();
    appendNode(*scene, *scene->mRootNode, aiMatrix4x4(), mesh);
    if (mesh->triangles.empty())
        return fail("holds no triangle");
    for (const QVector3D &vertex : mesh->vertices)
        if (!isFinite(vertex))
            return fail("holds a point that is no number");
    return true;
}
