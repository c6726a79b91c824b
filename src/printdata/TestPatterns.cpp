// Pictures for the test print.

#include "platform/Log.h"
#include "printdata/SliceToImage.h"

#include <cstring>

namespace
{
constexpr int defaultStep = 100;

void clearColumns(QImage *image, int from, int to)
{
    for (int row = 0; row < image->height(); ++row)
        for (int column = qMax(0, from); column < qMin(to, image->width()); ++column)
            image->setPixel(column, row, 0);
}
} // namespace

bool SliceToImage::getLineImage(quint8 supportByte, quint8 structureByte)
{
    if (fileName().isEmpty())
        return (LOG_WARNING(QStringLiteral("m_fileNmae is null")), false);
    const int blank = int(modelInfo().extraBlankPixel);
    QImage *pictures[] = {&m_supportLayer, &m_structureLayer};
    const quint8 bytes[] = {supportByte, structureByte};
    for (int i = 0; i < 2; ++i) {
        if (pictures[i]->isNull())
            continue;
        std::memset(pictures[i]->bits(), bytes[i], size_t(pictures[i]->sizeInBytes()));
        clearColumns(pictures[i], 0, blank);
        clearColumns(pictures[i], pictures[i]->width() - blank, pictures[i]->width());
    }
    return true;
}

void SliceToImage::drawTestLines(int which, int, int step)
{
    for (QImage *picture : {&m_supportLayer, &m_structureLayer})
        if (!picture->isNull())
            picture->fill(0);
    QImage &target = which == -1 ? m_supportLayer : m_structureLayer;
    const int blank = int(modelInfo().extraBlankPixel);
    const int stride = step > 0 ? step : defaultStep;
    for (int column = blank; column < target.width() - blank; column += stride)
        for (int row = 0; row < target.height(); ++row)
            target.setPixel(column, row, 1);
}
