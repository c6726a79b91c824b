// Pictures for the test print: all rows alike, so one is drawn pixel by pixel and the others are its copies.

#include "platform/Log.h"
#include "printdata/SliceToImage.h"

#include <algorithm>
#include <cstring>

namespace
{
constexpr int defaultStep = 100;

void repeatFirstRow(QImage *picture)
{
    const uchar *first = picture->constScanLine(0);
    for (int row = 1; row < picture->height(); ++row)
        std::memcpy(picture->scanLine(row), first, static_cast<size_t>(picture->bytesPerLine()));
}

void fillBetweenBlanks(QImage *picture, quint8 byte, float left, float right)
{
    if (picture->isNull())
        return;
    std::memset(picture->scanLine(0), byte, static_cast<size_t>(picture->bytesPerLine()));
    for (int column = 0; column < picture->width(); ++column) {
        const auto at = static_cast<float>(column);
        if (at < left || at >= right)
            picture->setPixel(column, 0, 0);
    }
    repeatFirstRow(picture);
}
} // namespace

bool SliceToImage::getLineImage(quint8 supportByte, quint8 structureByte)
{
    if (fileName().isEmpty()) {
        LOG_WARNING(QStringLiteral("m_fileNmae is null"));
        return false;
    }
    const ModelInfo info = modelInfo();
    const float right = info.width - info.extraBlankPixel;
    MutexLock lock(m_pictureMutex);
    fillBetweenBlanks(&m_supportLayer, supportByte, info.extraBlankPixel, right);
    fillBetweenBlanks(&m_structureLayer, structureByte, info.extraBlankPixel, right);
    return true;
}

void SliceToImage::drawTestLines(int which, int /*unused*/, int step)
{
    const ModelInfo info = modelInfo();
    const float right = info.width - info.extraBlankPixel;
    const int stride = step > 0 ? step : defaultStep;
    MutexLock lock(m_pictureMutex);
    if (m_supportLayer.isNull())
        return;
    m_supportLayer.fill(0);
    m_structureLayer.fill(0);
    QImage &target = which == -1 ? m_supportLayer : m_structureLayer;
    const float left = std::clamp(info.extraBlankPixel, 0.0f, static_cast<float>(target.width()));
    for (auto column = static_cast<qint64>(left); column < target.width(); column += stride) {
        if (static_cast<float>(column) < right)
            target.setPixel(static_cast<int>(column), 0, 1);
    }
    repeatFirstRow(&target);
}
