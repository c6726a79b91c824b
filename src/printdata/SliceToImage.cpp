#include "printdata/SliceToImage.h"

#include "frame/Folders.h"
#include "frame/PrintStatus.h"
#include "frame/Singleton.h"
#include "platform/Log.h"
#include "printdata/ModelFile.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <algorithm>
#include <cmath>

namespace
{
/// No sweep reaches further: the bar's nozzle rows at the highest interlace, and a carriage's way of 800 mm
/// at 1000 dpi. What claims more is damage, and would be allocated.
constexpr int maxRows = passRows * 12;
constexpr int maxColumns = 32768;

/// Truncated; the plain conversion is undefined for what is no number or lies beyond an integer.
int truncated(float value)
{
    constexpr float limit = 1 << 30;
    return std::isnan(value) ? 0 : static_cast<int>(std::clamp(value, -limit, limit));
}

/// Width that a one-bit QImage really has: its rows are padded to 32 bits.
int paddedWidth(const ModelInfo &info)
{
    const int width = truncated(info.width);
    return width > 0 && truncated(info.pixelsY) > 0 ? (width + 31) / 32 * 32 : 0;
}

ModelInfo readModelInfo(const QString &modelName)
{
    const ModelSettings settings(modelName);
    const auto number = [&settings](const char *key) { return settings.value(QLatin1String(key)).toFloat(); };
    ModelInfo info;
    info.layerHeight = number("layerHeight");
    info.dpiX = number("dpiX");
    info.dpiY = number("dpiY");
    info.extraBlankPixel = number("extraBlankPixel");
    info.width = number("pixelsX") + 2 * info.extraBlankPixel;
    info.pixelsY = number("pixelsY");
    info.passCnt = truncated(number("passCnt"));
    info.modelMaterial = number("modelMaterial");
    info.supportMaterial = number("supportMaterial");
    return info;
}

/// Keeps the memory of a picture that has the size already.
void resizePicture(QImage *picture, int width, int height)
{
    if (picture->size() == QSize(width, height))
        return;
    *picture = QImage(); // the old memory goes before the new one comes
    *picture = QImage(width, height, QImage::Format_MonoLSB);
}
} // namespace

SliceToImage::SliceToImage() : m_process(this)
{
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    if (QCoreApplication::instance())
        moveToThread(QCoreApplication::instance()->thread());
}

SliceToImage *sliceToImage()
{
    return singleton<SliceToImage>();
}

int SliceToImage::loadModelInfo(const QString &path)
{
    if (printStatus() != PrintStatusIdle)
        return -2;
    const QString name = QFileInfo(path).fileName();
    if (!isModelName(name) || GetModelBmpAndIni(modelPath(name), nullptr) != 0)
        return -1;
    const ModelInfo info = readModelInfo(name);
    if (!allocatePictures(info))
        return -1;
    MutexLock lock(m_modelMutex);
    m_fileNmae = name;
    m_info = info;
    return 0;
}

bool SliceToImage::allocatePictures(const ModelInfo &info)
{
    const int width = paddedWidth(info);
    const int rows = width > 0 ? truncated(info.pixelsY) : 0;
    if (width > maxColumns || rows > maxRows) {
        LOG_WARNING(QStringLiteral("picture too big: %1 x %2").arg(width).arg(rows));
        return false;
    }
    MutexLock lock(m_pictureMutex);
    for (QImage *layer : {&m_supportLayer, &m_structureLayer}) {
        resizePicture(layer, width, rows);
        layer->fill(0);
    }
    for (QImage *pass : {&m_supportPass, &m_structurePass})
        resizePicture(pass, width, width > 0 ? passRows : 0);
    return true;
}

ModelInfo SliceToImage::modelInfo() const
{
    MutexLock lock(m_modelMutex);
    return m_info;
}

float SliceToImage::layerHeightUm() const
{
    return modelInfo().layerHeight * 1000;
}

int SliceToImage::passCnt() const
{
    return modelInfo().passCnt;
}

int SliceToImage::sumLayer() const
{
    return m_SumSliceLayer;
}

float SliceToImage::dpiX() const
{
    return modelInfo().dpiX;
}

float SliceToImage::dpiY() const
{
    return modelInfo().dpiY;
}

QString SliceToImage::fileName() const
{
    MutexLock lock(m_modelMutex);
    return m_fileNmae;
}

int SliceToImage::passWidth() const
{
    return paddedWidth(modelInfo());
}

int SliceToImage::passHeight() const
{
    return passWidth() > 0 ? passRows : 0;
}
