#include "ToolRig.h"

#include <QtEndian>
#include <cstring>

namespace
{
ToolRun run(const QString &program, const QStringList &arguments, const QString &folder)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.start(program, arguments);
    const bool ended = process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit;
    return {ended ? process.exitCode() : -1, process.readAllStandardOutput(), process.readAllStandardError()};
}

QByteArray inflate(const QByteArray &packed, quint32 size)
{
    const quint32 head = qToBigEndian(size);
    return qUncompress(QByteArray(reinterpret_cast<const char *>(&head), 4) + packed);
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
    return run(TZLPACK, arguments, m_folder.path());
}

ToolRun ToolRig::slice(const QString &model, const QString &folder) const
{
    return run(LAMOREL, {"-X", model, "-O", folder}, m_folder.path());
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
    const QByteArray bits = inflate(inflate(file.mid(20), inner), quint32(image.sizeInBytes()));
    if (bits.size() != image.sizeInBytes())
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
            stl.append(12, '\0');
            for (int n = 0; n < 9; ++n)
                stl.append(
                    reinterpret_cast<const char *>(&box[size_t(n % 3 + (face[n / 3] >> n % 3 & 1) * 3)]), 4);
            stl.append(2, '\0');
        }
    return stlOfTriangles(stl);
}
