#include "printdata/LayerFile.h"

#include "platform/Log.h"

#include <QFile>
#include <QtEndian>
#include <cerrno>
#include <cstring>
#include <zlib.h>

namespace
{
// A layer file: 20 bytes of head, little-endian, then a zlib stream whose content is a zlib stream of the
// picture's rows, bottom row first.
constexpr int headSize = 20;
constexpr int packedAt = 12; // u32, length of the outer stream
constexpr int innerAt = 16;  // u32, length of its content

/// More than any packing of so many bytes takes, however badly it was packed. A head that names more is
/// damaged, and would be allocated.
qint64 packedLimit(qint64 bytes)
{
    return 2 * bytes + 65536;
}

bool failed(const QString &why)
{
    LOG_WARNING(why);
    return false;
}

void makeRoom(std::vector<uchar> *buffer, size_t size)
{
    if (buffer->size() < size)
        buffer->resize(size);
}
} // namespace

QString layerFile(const QString &folder, char kind, int layer)
{
    return QStringLiteral("%1/slice_%2%3").arg(folder, QString(QLatin1Char(kind)), QString::number(layer));
}

bool LayerFileReader::unpack(const QString &path, uchar *bits, qint64 *bytes)
{
    if (path.isEmpty())
        return failed(QStringLiteral("file name is null"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return failed(QStringLiteral("open %1 error %2").arg(path, file.errorString()));
    char head[headSize];
    if (file.read(head, headSize) != headSize)
        return failed(QStringLiteral("read layer error %1").arg(path));
    const qint64 packedLength = qFromLittleEndian<quint32>(head + packedAt);
    const qint64 innerLength = qFromLittleEndian<quint32>(head + innerAt);
    const qint64 innerLimit = packedLimit(*bytes);
    if (packedLength > qMin(file.size() - headSize, packedLimit(innerLimit)))
        return failed(QStringLiteral("read data  error %1!=readlen").arg(packedLength));
    if (innerLength > innerLimit)
        return failed(QStringLiteral("read  data  error %1").arg(Z_BUF_ERROR));

    makeRoom(&m_packed, static_cast<size_t>(packedLength));
    makeRoom(&m_inner, static_cast<size_t>(innerLength));
    if (file.read(reinterpret_cast<char *>(m_packed.data()), packedLength) != packedLength)
        return failed(QStringLiteral("read data  error %1!=readlen").arg(packedLength));
    file.close();

    auto inner = static_cast<uLongf>(innerLength);
    const int outerResult =
        uncompress(m_inner.data(), &inner, m_packed.data(), static_cast<uLong>(packedLength));
    if (outerResult < 0)
        return failed(QStringLiteral("read  data  error %1").arg(outerResult));
    // The buffer is reused: behind what came now lies an earlier layer.
    auto length = static_cast<uLongf>(*bytes);
    if (uncompress(bits, &length, m_inner.data(), inner) != Z_OK)
        return failed(
            QStringLiteral("uncompress  data  error %1").arg(QString::fromLocal8Bit(std::strerror(errno))));
    *bytes = static_cast<qint64>(length);
    return true;
}
