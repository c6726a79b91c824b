#include "printdata/ModelFile.h"

#include "platform/Log.h"

#include <QBitmap>
#include <QFile>
#include <QtEndian>
#include <cerrno>
#include <cstring>

namespace
{
// Head of a .tzl file, 84 bytes, little-endian. The other bytes are the slicer's.
constexpr int headerSize = 84;
constexpr int iconAt = 16;    // u64 offset, i32 length at 24
constexpr int previewAt = 28; // u64 offset, i32 length at 36
constexpr int settingsAt = 52; // u64 offset, u64 length at 60

struct Block {
    quint64 offset;
    quint64 length;
};

Block pictureBlock(const QByteArray &header, int at)
{
    const qint32 length = qFromLittleEndian<qint32>(header.constData() + at + 8);
    return {qFromLittleEndian<quint64>(header.constData() + at), quint64(qMax(0, length))};
}

Block settingsBlock(const QByteArray &header)
{
    return {qFromLittleEndian<quint64>(header.constData() + settingsAt),
            qFromLittleEndian<quint64>(header.constData() + settingsAt + 8)};
}

/// False when the block does not lie whole in the file; nothing is allocated then.
bool readBlock(QFile &file, const Block &block, QByteArray *bytes)
{
    const quint64 size = quint64(file.size());
    if (block.offset > size || block.length > size - block.offset || !file.seek(qint64(block.offset)))
        return false;
    *bytes = file.read(qint64(block.length));
    return quint64(bytes->size()) == block.length;
}

bool readSettingsText(QFile &file, const QByteArray &header, QByteArray *text)
{
    if (readBlock(file, settingsBlock(header), text))
        return true;
    LOG_WARNING(QStringLiteral("fread size != sizeof(m_PrintInfo) "));
    return false;
}

void writeSideFile(const QString &path, const QByteArray &text)
{
    QFile ini(path);
    if (ini.open(QIODevice::WriteOnly | QIODevice::Truncate))
        ini.write(text);
    else
        LOG_WARNING(QStringLiteral("init %1 error %2").arg(path, ini.errorString()));
}

/// The picture with its black made transparent, in the size that the icon has. A picture that cannot be read
/// leaves the icon as it is.
void fillIcon(QFile &file, const QByteArray &header, QPixmap *icon)
{
    const QSize size = icon->size();
    QByteArray bytes;
    if (!readBlock(file, pictureBlock(header, iconAt), &bytes))
        return;
    icon->loadFromData(bytes);
    if (icon->isNull())
        return;
    icon->setMask(icon->createMaskFromColor(QColor(0, 0, 0, 255)));
    *icon = icon->scaled(size, Qt::KeepAspectRatio);
}
} // namespace

int GetModelBmpAndIni(const QString &path, QPixmap *icon)
{
    if (icon)
        icon->fill(Qt::white);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        LOG_WARNING(QStringLiteral("open file=%1 error=%2 \n").arg(path, file.errorString()));
        return -1;
    }
    const QByteArray header = file.read(headerSize);
    if (header.size() != headerSize) {
        LOG_WARNING(QStringLiteral("Read TzlHeader error"));
        return -1;
    }
    QByteArray settings;
    if (!readSettingsText(file, header, &settings))
        return -1;
    writeSideFile(path + QStringLiteral(".ini"), settings);
    if (icon)
        fillIcon(file, header, icon);
    return 0;
}

int readModelView(const QString &path, QPixmap *view)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        LOG_WARNING(QStringLiteral("open file=%1 error=%2 \n").arg(path, QString::fromLocal8Bit(std::strerror(errno))));
        return -1;
    }
    const QByteArray header = file.read(headerSize);
    if (header.size() != headerSize)
        return -1;
    QByteArray bytes; // the settings prove that the file is whole
    if (!readSettingsText(file, header, &bytes))
        return -1;
    if (readBlock(file, pictureBlock(header, previewAt), &bytes))
        view->loadFromData(bytes);
    return 0;
}
