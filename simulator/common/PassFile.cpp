#include "common/PassFile.h"

#include <QDataStream>
#include <QFile>
#include <QSaveFile>

namespace
{
constexpr char magic[8] = {'P', 'A', 'S', 'S', 'E', 'S', '0', '1'};
constexpr quint32 passLimit = 1u << 22;
constexpr quint32 planeLimit = 64u << 20;

void configure(QDataStream &stream)
{
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.setFloatingPointPrecision(QDataStream::DoublePrecision);
}

void writePlane(QDataStream &stream, const SparsePlane &plane)
{
    const QByteArray packed = qCompress(plane.bytes.data(), int(plane.bytes.size()), 1);
    stream << quint32(plane.bytes.size()) << quint32(packed.size());
    stream.writeRawData(packed.constData(), packed.size());
}

bool readPlane(QDataStream &stream, int width, int rows, SparsePlane *plane)
{
    quint32 size = 0, packedSize = 0;
    stream >> size >> packedSize;
    if (stream.status() != QDataStream::Ok || size > planeLimit || packedSize > planeLimit)
        return false;
    QByteArray packed(int(packedSize), Qt::Uninitialized);
    if (stream.readRawData(packed.data(), packed.size()) != packed.size())
        return false;
    const QByteArray bytes = qUncompress(packed);
    if (quint32(bytes.size()) != size)
        return false;
    plane->bytes.assign(bytes.begin(), bytes.end());
    return plane->valid(width, rows);
}

void writePass(QDataStream &stream, const PassRecord &pass)
{
    stream << pass.startSeconds << pass.endSeconds << quint8(pass.forward) << pass.columnPitch << pass.y
           << pass.z << qint32(pass.width) << qint32(pass.rows);
    for (const HeadPass &head : pass.heads)
        stream << quint8(head.fired) << head.firstX << qint32(head.rowShift);
    writePlane(stream, pass.structure);
    writePlane(stream, pass.support);
}

bool readPass(QDataStream &stream, PassRecord *pass)
{
    quint8 forward = 0;
    qint32 width = 0, rows = 0;
    stream >> pass->startSeconds >> pass->endSeconds >> forward >> pass->columnPitch >> pass->y >> pass->z >>
        width >> rows;
    pass->forward = forward;
    pass->width = width;
    pass->rows = rows;
    for (HeadPass &head : pass->heads) {
        quint8 fired = 0;
        qint32 shift = 0;
        stream >> fired >> head.firstX >> shift;
        head.fired = fired;
        head.rowShift = shift;
    }
    if (stream.status() != QDataStream::Ok || width < 0 || rows < 0 || width > 1 << 19 || rows > 1 << 16)
        return false;
    return readPlane(stream, width, rows, &pass->structure) && readPlane(stream, width, rows, &pass->support);
}
} // namespace

int PassRecord::headOfRow(int row) const
{
    for (int head = 0; head < geometry::heads; ++head) {
        const int barRow = row - heads[head].rowShift;
        if (heads[head].fired && barRow >= head * geometry::headRows &&
            barRow < (head + 1) * geometry::headRows)
            return head;
    }
    return -1;
}

bool writePasses(const QString &path, const std::vector<PassRecord> &passes, QString *error)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        *error = path + ": " + file.errorString();
        return false;
    }
    QDataStream stream(&file);
    configure(stream);
    stream.writeRawData(magic, sizeof magic);
    stream << quint32(passes.size());
    for (const PassRecord &pass : passes)
        writePass(stream, pass);
    if (stream.status() == QDataStream::Ok && file.commit())
        return true;
    *error = path + ": " + file.errorString();
    return false;
}

bool readPasses(const QString &path, std::vector<PassRecord> *passes, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = path + ": " + file.errorString();
        return false;
    }
    QDataStream stream(&file);
    configure(stream);
    char head[sizeof magic];
    quint32 count = 0;
    const bool known =
        stream.readRawData(head, sizeof head) == sizeof head && !memcmp(head, magic, sizeof head);
    stream >> count;
    if (!known || stream.status() != QDataStream::Ok || count > passLimit) {
        *error = path + ": no file of fired passes";
        return false;
    }
    for (quint32 i = 0; i < count; ++i) {
        passes->emplace_back();
        if (!readPass(stream, &passes->back())) {
            *error = QStringLiteral("%1: pass %2 is damaged").arg(path).arg(i + 1);
            return false;
        }
    }
    return true;
}
