#include "SlicedLayer.h"

#include "common/Geometry.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <algorithm>
#include <cstring>
#include <zlib.h>

namespace
{
constexpr int headBytes =
    20; // 12 of the slicer's own, length of the packed data, length of what it unpacks to
constexpr quint32 packedLimit = 256u << 20;
constexpr int sideLimit = 1 << 17;

quint32 number32(const QByteArray &bytes, int at)
{
    quint32 value = 0;
    std::memcpy(&value, bytes.constData() + at, sizeof value);
    return value;
}

bool unpack(const QByteArray &packed, void *target, uLong size, uLong *length)
{
    *length = size;
    return ::uncompress(static_cast<Bytef *>(target), length,
                        reinterpret_cast<const Bytef *>(packed.constData()), uLong(packed.size())) == Z_OK;
}

bool readPicture(const QString &path, LayerBits *picture, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = path + ": " + file.errorString();
        return false;
    }
    const QByteArray bytes = file.read(packedLimit);
    *error = path + ": no layer file";
    if (bytes.size() < headBytes)
        return false;
    const quint32 packed = number32(bytes, 12), inner = number32(bytes, 16);
    if (packed > quint32(bytes.size() - headBytes) || inner == 0 || inner > packedLimit)
        return false;
    QByteArray block(int(inner), '\0');
    uLong length = 0;
    if (!unpack(bytes.mid(headBytes, int(packed)), block.data(), inner, &length))
        return false;
    block.truncate(int(length));
    LayerBits upsideDown(picture->stride() * 8, picture->height());
    if (!unpack(block, upsideDown.row(0), uLong(picture->stride()) * uLong(picture->height()), &length))
        return false;
    for (int row = 0; row < picture->height(); ++row)
        std::memcpy(picture->row(row), upsideDown.row(picture->height() - 1 - row),
                    size_t(picture->stride()));
    error->clear();
    return true;
}

/// Where several layers share the rows of a picture, each prints only its own.
void keepRowsOfLayer(LayerBits *picture, const ModelSettings &settings, int layer)
{
    const int step = settings.rowStep();
    for (int row = 0; row < picture->height(); ++row) {
        if (row % step != settings.rowRest(layer))
            std::memset(picture->row(row), 0, size_t(picture->stride()));
    }
}
} // namespace

double ModelSettings::rowPitch() const
{
    return geometry::nozzlePitch / passCnt;
}

int ModelSettings::rowRest(int layer) const
{
    static constexpr int rests[3][3] = {{0, 0, 0}, {0, 1, 0}, {0, 2, 1}};
    return rests[rowStep() - 1][layer % rowStep()];
}

bool readSettings(const QString &ini, ModelSettings *settings, QString *error)
{
    if (!QFileInfo(ini).isFile()) {
        *error = ini + ": no such file";
        return false;
    }
    const QSettings values(ini, QSettings::IniFormat);
    settings->pixelsX = int(values.value("pixelsX").toDouble());
    settings->pixelsY = int(values.value("pixelsY").toDouble());
    settings->blank = int(values.value("extraBlankPixel").toDouble());
    settings->passCnt = int(values.value("passCnt").toDouble());
    settings->dpiX = values.value("dpiX").toDouble();
    const bool passes = settings->passCnt == 4 || settings->passCnt == 8 || settings->passCnt == 12;
    const bool sides = settings->pixelsX > 0 && settings->pixelsX < sideLimit && settings->pixelsY > 0 &&
                       settings->pixelsY < sideLimit && settings->blank >= 0 && settings->blank < sideLimit;
    if (passes && sides && settings->dpiX > 0)
        return true;
    *error = ini + ": no settings of a model";
    return false;
}

bool readSlicedLayer(const QString &folder, int layer, const ModelSettings &settings, LayerBits *structure,
                     LayerBits *support, QString *error)
{
    *structure = LayerBits(settings.width(), settings.pixelsY);
    *support = LayerBits(settings.width(), settings.pixelsY);
    if (!readPicture(QStringLiteral("%1/slice_m%2").arg(folder).arg(layer), structure, error) ||
        !readPicture(QStringLiteral("%1/slice_s%2").arg(folder).arg(layer), support, error))
        return false;
    keepRowsOfLayer(structure, settings, layer);
    keepRowsOfLayer(support, settings, layer);
    return true;
}

int lastSlicedLayer(const QString &folder)
{
    int last = 0;
    for (const QString &name : QDir(folder).entryList({"slice_m*"}, QDir::Files))
        last = std::max(last, name.midRef(7).toInt());
    return last;
}
