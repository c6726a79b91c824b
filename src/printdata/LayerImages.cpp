// Layer files to pictures, pictures to passes.

#include "frame/Folders.h"
#include "frame/JsonConfig.h"
#include "platform/Log.h"
#include "printdata/BitRows.h"
#include "printdata/SliceToImage.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>
#include <cerrno>
#include <cstring>
#include <zlib.h>

namespace
{
// A layer file: 20 bytes of head, then a zlib stream whose content is a zlib stream of the picture's rows.
constexpr int headSize = 20;
constexpr int compressedAt = 12; // u32, length of the outer stream
constexpr int innerAt = 16;      // u32, length of its content
constexpr int keptLayers = 30;   // files that stay behind the print; going back after a cleaning needs 20
constexpr int spareMisLayers = 100;
constexpr double massUnit = 1e9;

struct LayerHead {
    quint32 compressed = 0;
    quint32 inner = 0;
};

/// The inner stream of a picture is never longer than this; a head that says so is damaged.
quint64 innerLimit(qint64 pictureBytes)
{
    return compressBound(uLong(pictureBytes)) + 4096;
}

void grow(QByteArray *buffer, qint64 size)
{
    if (buffer->size() < size)
        buffer->resize(int(size));
}

bool unreadable(const QString &why)
{
    LOG_WARNING(why);
    return false;
}

uchar *picturesBits(QImage *image)
{
    return image->isNull() ? nullptr : image->bits();
}

void clearPicture(QImage *image)
{
    if (!image->isNull())
        std::memset(image->bits(), 0, size_t(image->sizeInBytes()));
}
} // namespace

QString SliceToImage::layerFile(char kind, int layer) const
{
    return QStringLiteral("%1/slice_%2%3").arg(sliceFolder(fileName()), QString(QLatin1Char(kind)),
                                               QString::number(layer));
}

/// Unpacks a file into a picture's bits, bottom row first.
bool SliceToImage::decodeFile(const QString &path, uchar *bits, qint64 bytes)
{
    if (path.isEmpty())
        return unreadable(QStringLiteral("file name is null"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return unreadable(QStringLiteral("open %1 error %2").arg(path, file.errorString()));
    char head[headSize];
    if (file.read(head, headSize) != headSize)
        return unreadable(QStringLiteral("read layer error %1").arg(path));
    const LayerHead sizes{qFromLittleEndian<quint32>(head + compressedAt), qFromLittleEndian<quint32>(head + innerAt)};
    if (sizes.compressed > quint64(file.size() - headSize))
        return unreadable(QStringLiteral("read data  error %1!=readlen").arg(sizes.compressed));
    if (sizes.inner > innerLimit(bytes))
        return unreadable(QStringLiteral("read  data  error %1").arg(sizes.inner));
    grow(&m_compressed, sizes.compressed);
    grow(&m_inner, sizes.inner);
    if (file.read(m_compressed.data(), sizes.compressed) != qint64(sizes.compressed))
        return unreadable(QStringLiteral("read data  error %1!=readlen").arg(sizes.compressed));
    file.close();

    uLongf innerLength = sizes.inner;
    const int outer = uncompress(reinterpret_cast<Bytef *>(m_inner.data()), &innerLength,
                                 reinterpret_cast<const Bytef *>(m_compressed.constData()), sizes.compressed);
    if (outer < 0)
        return unreadable(QStringLiteral("read  data  error %1").arg(outer));
    uLongf pictureLength = uLongf(bytes);
    if (uncompress(bits, &pictureLength, reinterpret_cast<const Bytef *>(m_inner.constData()), sizes.inner) != Z_OK)
        return unreadable(
            QStringLiteral("uncompress  data  error %1").arg(QString::fromLocal8Bit(std::strerror(errno))));
    return true;
}

bool SliceToImage::binary2Image(const QString &path, QImage *target)
{
    if (!decodeFile(path, picturesBits(target), target->sizeInBytes()))
        return false;
    *target = target->mirrored(false, true);
    return true;
}

bool SliceToImage::loadLayerPair(int layer)
{
    clearPicture(&m_supportLayer);
    clearPicture(&m_structureLayer);
    const bool support =
        decodeFile(layerFile('s', layer), picturesBits(&m_supportLayer), m_supportLayer.sizeInBytes());
    const bool structure =
        decodeFile(layerFile('m', layer), picturesBits(&m_structureLayer), m_structureLayer.sizeInBytes());
    if (!support || !structure)
        return false;
    for (char kind : {'s', 'm'})
        QFile::remove(layerFile(kind, layer - keptLayers));
    return true;
}

bool SliceToImage::getLayerImage(int layer)
{
    if (loadLayerPair(layer) || loadLayerPair(layer))
        return true;
    LOG_WARNING(QStringLiteral("m_misLayer=%1 _layer=%2").arg(m_misLayer).arg(layer));
    if (!QFileInfo::exists(layerFile('s', layer)) || !QFileInfo::exists(layerFile('m', layer)))
        return false; // the slicer has not got there
    if (m_misLayer >= layer - spareMisLayers)
        return false; // a second damaged layer within so many holds the print up
    const bool stoodIn = loadLayerPair(layer - 1);
    m_misLayer = layer;
    return stoodIn;
}

const uchar *SliceToImage::layerRow(const QImage &layer, int row) const
{
    return layer.constScanLine(layer.height() - 1 - row);
}

void SliceToImage::cutPass(const QImage &layer, QImage *pass, int phase, int firstRow, bool forward) const
{
    clearPicture(pass);
    const int count = passCnt();
    if (count <= 0 || layer.isNull() || pass->isNull())
        return;
    const int bytes = pass->bytesPerLine();
    const int rows = layer.height() / count;
    for (int i = 0; i < rows && firstRow + i < passRows; ++i) {
        const int row = phase + i * count;
        uchar *to = pass->scanLine(firstRow + i);
        if (forward)
            std::memcpy(to, layerRow(layer, row), size_t(bytes));
        else
            mirrorRow(to, layerRow(layer, row), bytes); // a reverse sweep meets the columns last to first
    }
}

void SliceToImage::getPassImage(QImage *structure, QImage *support, int phase, int firstRow, bool forward)
{
    // The caller lets go of the last pass first, so that clearing does not copy it.
    *structure = QImage();
    *support = QImage();
    cutPass(m_structureLayer, &m_structurePass, phase, firstRow, forward);
    cutPass(m_supportLayer, &m_supportPass, phase, firstRow, forward);
    *structure = m_structurePass;
    *support = m_supportPass;
}

/// The heads' bands are thirds of the rows; every second row counts, and that is the budget's unit.
bool SliceToImage::calcDotCount(double topMass)
{
    if (topMass == 0)
        return false;
    const double dropMass = double(sysConfig()->getFloat(QStringLiteral("DotDropMass")));
    const int band = m_structureLayer.height() / 3;
    std::atomic<double> *masses[] = {&m_head1Mass, &m_head2Mass, &m_head3mass};
    bool over = false;
    for (int head = 0; head < 3; ++head) {
        quint64 dots = 0;
        for (int row = head * band; row < (head + 1) * band; row += 2)
            dots += countBits(layerRow(m_structureLayer, row), m_structureLayer.bytesPerLine());
        *masses[head] = *masses[head] + double(dots) * dropMass / massUnit;
        over = over || *masses[head] > topMass;
    }
    if (!over)
        return false;
    LOG_WARNING(QStringLiteral("m_head1Mass=%1, m_head2Mass=%2,m_head3mass=%3,dotDropMass=%4,topmass=%5")
                    .arg(m_head1Mass.load())
                    .arg(m_head2Mass.load())
                    .arg(m_head3mass.load())
                    .arg(dropMass)
                    .arg(topMass));
    resetHeadMass();
    return true;
}

void SliceToImage::resetHeadMass()
{
    m_head1Mass = 0;
    m_head2Mass = 0;
    m_head3mass = 0;
}
