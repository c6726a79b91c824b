// tzlpack: makes a .tzl model from a mesh.
#include "Renderer.h"
#include "Settings.h"
#include "TzlFormat.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QSaveFile>
#include <cstdio>

namespace
{
constexpr int iconSize = 256;
constexpr int previewSize = 512;

QByteArray png(const QImage &image)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

bool write(const QString &path, const QByteArray &bytes, QString *error)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return true;
    *error = path + ": " + file.errorString();
    return false;
}

bool pack(const PackOptions &options, QString *error)
{
    Mesh mesh;
    if (!readMesh(options.mesh, &mesh, error) || !placeOnBed(options, &mesh, error))
        return false;
    const QVector3D extent = mesh.bounds().size();
    const Volumes volumes = measureVolumes(mesh);
    TzlFormat::Sections sections;
    sections.settings = settingsText(options, extent, volumes);
    sections.icon = png(renderIcon(mesh, iconSize));
    sections.preview = png(renderPreview(mesh, previewSize));
    sections.mesh = mesh.encode();
    if (!write(options.out, TzlFormat::encode(sections), error))
        return false;
    std::printf("%s: %.2f x %.2f x %.2f mm, %d layers, %zu triangles\n", qUtf8Printable(options.out),
                double(extent.x()), double(extent.y()), double(extent.z()),
                options.layers(double(extent.z())), mesh.triangles.size());
    return true;
}
} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    PackOptions options;
    QString error;
    if (readOptions(QCoreApplication::arguments(), &options, &error) && pack(options, &error))
        return 0;
    std::fprintf(stderr, "tzlpack: %s\n", qUtf8Printable(error));
    return 1;
}
