#include "printdata/ModelFile.h"

#include "frame/Folders.h"
#include "platform/Log.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QSaveFile>
#include <QtEndian>
#include <algorithm>
#include <cerrno>
#include <cstring>

namespace
{
// Head of a .tzl file, 84 bytes, little-endian. The other bytes are the slicer's.
constexpr int headerSize = 84;
constexpr int iconAt = 16;     // u64 offset, i32 length at 24
constexpr int previewAt = 28;  // u64 offset, i32 length at 36
constexpr int settingsAt = 52; // u64 offset, u64 length at 60

/// Settings are some kilobytes and pictures some megabytes: a longer block is damage, even in a file that has
/// it.
constexpr quint64 maxBlock = 64 << 20;
/// A few bytes can claim to be a picture of any size.
constexpr qint64 maxPicturePixels = 16 << 20;

struct Block {
    quint64 offset;
    quint64 length;
};

Block pictureBlock(const QByteArray &header, int at)
{
    const char *field = header.constData() + at;
    // A negative length becomes one that no file has.
    const auto length = static_cast<quint64>(qint64{qFromLittleEndian<qint32>(field + 8)});
    return {qFromLittleEndian<quint64>(field), length};
}

Block settingsBlock(const QByteArray &header)
{
    const char *field = header.constData() + settingsAt;
    return {qFromLittleEndian<quint64>(field), qFromLittleEndian<quint64>(field + 8)};
}

/// False when the block does not lie whole in the file; nothing is allocated then.
bool readBlock(QFile &file, const Block &block, QByteArray *bytes)
{
    const auto size = static_cast<quint64>(file.size());
    if (block.offset > size || block.length > qMin(size - block.offset, maxBlock) ||
        !file.seek(static_cast<qint64>(block.offset)))
        return false;
    *bytes = file.read(static_cast<qint64>(block.length));
    return static_cast<quint64>(bytes->size()) == block.length;
}

bool readSettingsText(QFile &file, const QByteArray &header, QByteArray *text)
{
    if (readBlock(file, settingsBlock(header), text))
        return true;
    LOG_WARNING(QStringLiteral("fread size != sizeof(m_PrintInfo) "));
    return false;
}

/// Other threads may be reading the file of the same model: they see the old text or the new, never half of
/// one.
void writeSideFile(const QString &path, const QByteArray &text)
{
    QSaveFile ini(path);
    ini.setDirectWriteFallback(true);
    if (!ini.open(QIODevice::WriteOnly) || ini.write(text) != text.size() || !ini.commit())
        LOG_WARNING(QStringLiteral("init %1 error %2").arg(path, ini.errorString()));
}

/// The picture of a block. False, with a log line, when the file does not hold the whole of it; a picture
/// that is whole and cannot be understood is a null image.
bool readPicture(QFile &file, const Block &block, QImage *picture)
{
    QByteArray bytes;
    if (!readBlock(file, block, &bytes)) {
        LOG_WARNING(QStringLiteral("picture of %1 is cut").arg(file.fileName()));
        return false;
    }
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    const QSize size = reader.size();
    if (qint64{size.width()} * size.height() > maxPicturePixels) {
        LOG_WARNING(QStringLiteral("picture of %1 is too big: %2 x %3")
                        .arg(file.fileName())
                        .arg(size.width())
                        .arg(size.height()));
        return false;
    }
    *picture = reader.read();
    return true;
}

void makeBlackTransparent(QImage *picture)
{
    constexpr QRgb black = 0xff000000;
    *picture = picture->convertToFormat(QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < picture->height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(picture->scanLine(y));
        std::replace(line, line + picture->width(), black, QRgb{0});
    }
}

/// The picture with its black made transparent, in the size that the icon has. A picture that is cut leaves
/// the icon as it is.
void fillIcon(QFile &file, const QByteArray &header, QImage *icon)
{
    QImage picture;
    if (!readPicture(file, pictureBlock(header, iconAt), &picture))
        return;
    if (picture.isNull()) {
        *icon = picture;
        return;
    }
    makeBlackTransparent(&picture);
    *icon = picture.scaled(icon->size(), Qt::KeepAspectRatio);
}
} // namespace

int readModelIcon(const QString &path, QImage *icon)
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

int GetModelBmpAndIni(const QString &path, QPixmap *icon)
{
    if (!icon)
        return readModelIcon(path, nullptr);
    QImage image(icon->size(), QImage::Format_RGB32);
    const int result = readModelIcon(path, &image);
    *icon = QPixmap::fromImage(image);
    return result;
}

int readModelView(const QString &path, QPixmap *view)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        const QString error = QString::fromLocal8Bit(std::strerror(errno));
        LOG_WARNING(QStringLiteral("open file=%1 error=%2 \n").arg(path, error));
        return -1;
    }
    const QByteArray header = file.read(headerSize);
    if (header.size() != headerSize)
        return -1;
    QByteArray settings; // read as a check that the file is whole
    if (!readSettingsText(file, header, &settings))
        return -1;
    QImage picture;
    if (readPicture(file, pictureBlock(header, previewAt), &picture)) {
        makeBlackTransparent(&picture);
        *view = QPixmap::fromImage(picture);
    }
    return 0;
}

bool isModelName(const QString &name)
{
    static const QStringList taken{QString(), QStringLiteral("."), QStringLiteral(".."),
                                   QStringLiteral("log"), QStringLiteral("HistoryIcon")};
    return !taken.contains(name, Qt::CaseInsensitive) && !name.contains(QLatin1Char('/')) &&
           !name.contains(QLatin1Char('\\'));
}

ModelSettings::ModelSettings(const QString &modelName)
    : QSettings(modelIniPath(modelName), QSettings::IniFormat)
{
    setIniCodec("UTF-8");
}
