#include "printdata/SliceToImage.h"

#include "frame/Folders.h"
#include "frame/PrintStatus.h"
#include "frame/Singleton.h"
#include "printdata/ModelFile.h"

#include <QFileInfo>
#include <QSettings>

namespace
{
/// Largest picture side that is believed: the bed has 7008 x 5280 at 600 dpi.
constexpr float maxSide = 65536;

/// The width that the pictures really have: rows are padded to 32 bits.
int paddedWidth(int width)
{
    return (width + 31) / 32 * 32;
}

int side(float value)
{
    return value > 0 && value <= maxSide ? int(value) : 0;
}
} // namespace

SliceToImage::SliceToImage() : m_process(this)
{
    m_process.setProcessChannelMode(QProcess::MergedChannels);
}

SliceToImage *sliceToImage()
{
    return singleton<SliceToImage>();
}

int SliceToImage::loadModelInfo(const QString &path)
{
    if (printStatus() != PrintStatusIdle)
        return -2;
    if (GetModelBmpAndIni(path, nullptr) != 0)
        return -1;
    readSettings(path + QStringLiteral(".ini"));
    {
        MutexLock lock(m_modelMutex);
        m_fileNmae = QFileInfo(path).fileName();
    }
    allocatePictures();
    return 0;
}

void SliceToImage::readSettings(const QString &iniPath)
{
    const QSettings settings(iniPath, QSettings::IniFormat);
    const auto number = [&](const char *key) { return settings.value(QLatin1String(key)).toFloat(); };
    ModelInfo info;
    info.layerHeight = number("layerHeight");
    info.dpiX = number("dpiX");
    info.dpiY = number("dpiY");
    info.extraBlankPixel = number("extraBlankPixel");
    info.width = number("pixelsX") + 2 * info.extraBlankPixel;
    info.pixelsY = number("pixelsY");
    info.passCnt = qint32(number("passCnt"));
    info.modelMaterial = number("modelMaterial");
    info.supportMaterial = number("supportMaterial");
    MutexLock lock(m_modelMutex);
    m_info = info;
}

void SliceToImage::allocatePictures()
{
    const ModelInfo info = modelInfo();
    const int width = paddedWidth(side(info.width));
    const auto picture = [width](int height) {
        QImage image(width, height, QImage::Format_MonoLSB);
        if (!image.isNull())
            image.fill(0);
        return image;
    };
    m_supportLayer = picture(side(info.pixelsY));
    m_structureLayer = picture(side(info.pixelsY));
    m_supportPass = picture(passRows);
    m_structurePass = picture(passRows);
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
    return paddedWidth(side(modelInfo().width));
}

int SliceToImage::passHeight() const
{
    return passRows;
}
