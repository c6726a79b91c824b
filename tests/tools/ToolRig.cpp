#include "ToolRig.h"

#include <QDir>
#include <QtEndian>
#include <array>
#include <cmath>
#include <cstring>
#include <zlib.h>

namespace
{
constexpr int limitMs = 60000;

ToolRun run(const QString &program, const QStringList &arguments, const QString &folder, const QString &fault)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("PELORA_SLICER_FAULT", fault);
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    const bool ended = process.waitForFinished(limitMs) && process.exitStatus() == QProcess::NormalExit;
    return {ended ? process.exitCode() : -1, process.readAllStandardOutput(), process.readAllStandardError()};
}

void putTriangle(QByteArray *stl, const float (&corners)[3][3])
{
    stl->append(12, '\0');
    for (const auto &corner : corners)
        stl->append(reinterpret_cast<const char *>(corner), 12);
    stl->append(2, '\0');
}

QByteArray inflate(const QByteArray &packed, int size)
{
    QByteArray bytes(size, '\0');
    uLongf length = uLongf(size);
    const int result = uncompress(reinterpret_cast<Bytef *>(bytes.data()), &length,
                                  reinterpret_cast<const Bytef *>(packed.constData()), uLong(packed.size()));
    return result == Z_OK && length == uLongf(size) ? bytes : QByteArray();
}
} // namespace

void ToolRig::write(const QString &name, const QByteArray &bytes) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qUtf8Printable(file.fileName()));
}

QByteArray ToolRig::read(const QString &name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

ToolRun ToolRig::pack(const QStringList &arguments) const
{
    return run(TZLPACK, arguments, m_folder.path(), {});
}

ToolRun ToolRig::slice(const QString &model, const QString &folder, const QString &fault) const
{
    return run(LAMOREL, {"-X", model, "-O", folder}, m_folder.path(), fault);
}

QString ToolRig::model(const QString &mesh, const QStringList &options) const
{
    const QString name = mesh + ".tzl";
    const ToolRun packed = pack(QStringList{mesh, "--out", name} + options);
    if (packed.code != 0)
        qWarning("%s", packed.err.constData());
    return name;
}

QImage ToolRig::layer(const QString &folder, char kind, int number, int width, int height) const
{
    const QByteArray file = read(QString("%1/slice_%2%3").arg(folder, QChar(kind)).arg(number));
    // To the end of the 32 bits in which a row ends, so that no bit is left out.
    QImage image((width + 31) / 32 * 32, height, QImage::Format_MonoLSB);
    if (file.size() < 20)
        return {};
    const auto packed = qFromLittleEndian<quint32>(file.constData() + 12);
    const auto inner = qFromLittleEndian<quint32>(file.constData() + 16);
    if (quint32(file.size()) != 20 + packed || inner > 100000000)
        return {};
    const QByteArray bits = inflate(inflate(file.mid(20), int(inner)), int(image.sizeInBytes()));
    if (bits.isEmpty())
        return {};
    std::memcpy(image.bits(), bits.constData(), size_t(bits.size()));
    return image.mirrored(false, true);
}

int dots(const QImage &image)
{
    int count = 0;
    for (qsizetype n = 0; n < image.sizeInBytes(); ++n)
        count += __builtin_popcount(image.constBits()[n]);
    return count;
}

QByteArray stlOfTriangles(const QByteArray &records)
{
    const quint32 count = qToLittleEndian(quint32(records.size() / 50));
    return QByteArray(80, '\0') + QByteArray(reinterpret_cast<const char *>(&count), 4) + records;
}

QByteArray stlOfBoxes(const QList<std::array<float, 6>> &boxes)
{
    // A corner's bits choose low or high of x, y and z.
    static const int faces[12][3] = {{0, 2, 1}, {1, 2, 3}, {4, 5, 6}, {5, 7, 6}, {0, 1, 4}, {1, 5, 4},
                                     {2, 6, 3}, {3, 6, 7}, {0, 4, 2}, {2, 4, 6}, {1, 3, 5}, {3, 7, 5}};
    QByteArray stl;
    for (const auto &box : boxes)
        for (const auto &face : faces) {
            float corners[3][3];
            for (int n = 0; n < 3; ++n)
                for (int axis = 0; axis < 3; ++axis)
                    corners[n][axis] = box[size_t(axis + (face[n] >> axis & 1) * 3)];
            putTriangle(&stl, corners);
        }
    return stlOfTriangles(stl);
}

QByteArray stlOfCylinder(float radius, float height, int steps)
{
    QByteArray stl;
    for (int n = 0; n < steps; ++n) {
        const auto x = [=](int k) { return radius * float(std::cos(2 * M_PI * (k % steps) / steps)); };
        const auto y = [=](int k) { return radius * float(std::sin(2 * M_PI * (k % steps) / steps)); };
        const float ax = x(n), ay = y(n), bx = x(n + 1), by = y(n + 1);
        putTriangle(&stl, {{0, 0, 0}, {bx, by, 0}, {ax, ay, 0}});
        putTriangle(&stl, {{0, 0, height}, {ax, ay, height}, {bx, by, height}});
        putTriangle(&stl, {{ax, ay, 0}, {bx, by, 0}, {bx, by, height}});
        putTriangle(&stl, {{ax, ay, 0}, {bx, by, height}, {ax, ay, height}});
    }
    return stlOfTriangles(stl);
}
