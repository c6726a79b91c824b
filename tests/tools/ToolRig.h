#pragma once
// The packer and the slicer as a user runs them, in a folder of their own, and the layer files read back.
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <array>

struct ToolRun {
    int code; ///< -1 when it did not end by itself
    QByteArray out, err;
};

class ToolRig
{
public:
    QString path(const QString &name) const { return m_folder.filePath(name); }
    void write(const QString &name, const QByteArray &bytes) const;
    QByteArray read(const QString &name) const;
    ToolRun pack(const QStringList &arguments) const;
    ToolRun slice(const QString &model, const QString &folder) const;
    /// Packs a mesh that the test wrote before; the model's name.
    QString model(const QString &mesh, const QStringList &options = {}) const;
    /// One layer picture, top row first; null when the file is not what it should be.
    QImage layer(const QString &folder, char kind, int number, int width, int height) const;

private:
    QTemporaryDir m_folder;
};

int dots(const QImage &image);
/// A binary STL of these 50-byte records.
QByteArray stlOfTriangles(const QByteArray &records);
/// Of boxes, given as low x, y, z, high x, y, z.
QByteArray stlOfBoxes(const QList<std::array<float, 6>> &boxes);
