// Layer files to pictures, pictures to passes.

#include "frame/Folders.h"
#include "frame/JsonConfig.h"
#include "platform/Log.h"
#include "printdata/BitRows.h"
#include "printdata/LayerFile.h"
#include "printdata/SliceToImage.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cstring>

namespace
{
constexpr int keptLayers = 30;       // files that stay behind the print, which may go back some layers
constexpr int standInDistance = 100; // layers between two that are printed as their predecessor
constexpr int heads = 3;
constexpr double massUnit = 1e9;

void turnTopToBottom(QImage *picture)
{
    for (int top = 0, bottom = picture->height() - 1; top < bottom; ++top, --bottom) {
        uchar *row = picture->scanLine(top);
        std::swap_ranges(row, row + picture->bytesPerLine(), picture->scanLine(bottom));
    }
}

const uchar *layerRow(const QImage &layer, int row)
{
    return layer.constBits() + qint64{layer.height() - 1 - row} * layer.bytesPerLine();
}

/// Which rows of a layer make one pass, and where they lie on the nozzle rows.
struct Cut {
    int phase;
    int step;
    int firstRow;
    bool forward;
};

/// Every row of the pass is written once: copied, or mirrored where a reverse sweep meets the columns last to
/// first, or cleared.
void cutPass(const QImage &layer, QImage *pass, const Cut &cut)
{
    if (pass->isNull())
        return;
    const int bytes = pass->bytesPerLine();
    uchar *to = pass->bits();
    const int rows = cut.step > 0 ? layer.height() / cut.step : 0;
    for (int row = 0; row < passRows; ++row, to += bytes) {
        const int index = row - cut.firstRow;
        const qint64 from = cut.phase + qint64{index} * cut.step;
        if (index < 0 || index >= rows || from < 0 || from >= layer.height())
            std::memset(to, 0, static_cast<size_t>(bytes));
        else if (cut.forward)
            std::memcpy(to, layerRow(layer, static_cast<int>(from)), static_cast<size_t>(bytes));
        else
            mirrorRow(to, layerRow(layer, static_cast<int>(from)), bytes);
    }
}
} // namespace

/// The picture of a file, bottom row first. What a smaller picture leaves is 0, and all of it after a
/// failure.
bool SliceToImage::decodeFile(const QString &path, QImage *target)
{
    qint64 filled = target->sizeInBytes();
    uchar *bits = target->bits();
    const bool read = m_layerFile.unpack(path, bits, &filled);
    const qint64 kept = read ? filled : 0;
    if (bits)
        std::memset(bits + kept, 0, static_cast<size_t>(target->sizeInBytes() - kept));
    return read;
}

bool SliceToImage::binary2Image(const QString &path, QImage *target)
{
    MutexLock lock(m_pictureMutex);
    if (!decodeFile(path, target))
        return false;
    turnTopToBottom(target);
    return true;
}

bool SliceToImage::loadLayerPair(const QString &folder, int layer)
{
    const bool support = decodeFile(layerFile(folder, 's', layer), &m_supportLayer);
    const bool structure = decodeFile(layerFile(folder, 'm', layer), &m_structureLayer);
    if (!support || !structure)
        return false;
    for (const char kind : {'s', 'm'})
        QFile::remove(layerFile(folder, kind, layer - keptLayers));
    return true;
}

bool SliceToImage::getLayerImage(int layer)
{
    const QString folder = sliceFolder(fileName());
    MutexLock lock(m_pictureMutex);
    if (loadLayerPair(folder, layer) || loadLayerPair(folder, layer))
        return true;
    LOG_WARNING(QStringLiteral("m_misLayer=%1 _layer=%2").arg(m_misLayer).arg(layer));
    if (!QFileInfo::exists(layerFile(folder, 's', layer)) ||
        !QFileInfo::exists(layerFile(folder, 'm', layer)))
        return false; // the slicer has not got there
    if (m_misLayer >= layer - standInDistance)
        return false; // a second one so near holds the print up
    m_misLayer = layer;
    return loadLayerPair(folder, layer - 1);
}

void SliceToImage::getPassImage(QImage *structure, QImage *support, int phase, int firstRow, bool forward)
{
    // The caller lets go of the last pass first: a picture that is shared would be copied before it is
    // written.
    *structure = QImage();
    *support = QImage();
    const Cut cut{phase, passCnt(), firstRow, forward};
    MutexLock lock(m_pictureMutex);
    cutPass(m_structureLayer, &m_structurePass, cut);
    cutPass(m_supportLayer, &m_supportPass, cut);
    *structure = m_structurePass;
    *support = m_supportPass;
}

/// The picture is three bands of rows, one a head. Every second row counts: that is the unit of the budget.
bool SliceToImage::calcDotCount(double topMass)
{
    if (topMass == 0)
        return false;
    const auto dropMass = static_cast<double>(sysConfig()->getFloat(QStringLiteral("DotDropMass")));
    MutexLock lock(m_pictureMutex);
    const int band = m_structureLayer.height() / heads;
    double *masses[heads] = {&m_head1Mass, &m_head2Mass, &m_head3mass};
    for (int head = 0; head < heads; ++head) {
        quint64 dots = 0;
        for (int row = head * band; row < (head + 1) * band; row += 2)
            dots += countBits(layerRow(m_structureLayer, row), m_structureLayer.bytesPerLine());
        *masses[head] += static_cast<double>(dots) * dropMass / massUnit;
    }
    return CheckDropMass(dropMass, topMass);
}

/// True when a head has passed its budget; the count then begins anew.
bool SliceToImage::CheckDropMass(double dropMass, double topMass)
{
    if (m_head1Mass <= topMass && m_head2Mass <= topMass && m_head3mass <= topMass)
        return false;
    LOG_WARNING(QStringLiteral("m_head1Mass=%1, m_head2Mass=%2,m_head3mass=%3,dotDropMass=%4,topmass=%5")
                    .arg(m_head1Mass)
                    .arg(m_head2Mass)
                    .arg(m_head3mass)
                    .arg(dropMass)
                    .arg(topMass));
    m_head1Mass = m_head2Mass = m_head3mass = 0;
    return true;
}

void SliceToImage::resetHeadMass()
{
    MutexLock lock(m_pictureMutex);
    m_head1Mass = m_head2Mass = m_head3mass = 0;
}
