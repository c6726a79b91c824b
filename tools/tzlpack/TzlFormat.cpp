#include "TzlFormat.h"

#include <QtEndian>
#include <cstring>
#include <zlib.h>

namespace
{
template <typename T> void put(QByteArray &bytes, int offset, T value)
{
    qToLittleEndian<T>(value, bytes.data() + offset);
}
} // namespace

QByteArray TzlFormat::encode(const Sections &sections)
{
    QByteArray file(headerSize, '\0');
    const auto append = [&file](const QByteArray &section) {
        const quint64 offset = quint64(file.size());
        file += section;
        return offset;
    };
    const quint64 settings = append(sections.settings);
    const quint64 icon = append(sections.icon);
    const quint64 preview = append(sections.preview);
    const quint64 mesh = append(sections.mesh);
    std::memcpy(file.data(), mark, 8);
    put<quint32>(file, 8, version);
    put<quint32>(file, 12,
                 quint32(crc32(0, reinterpret_cast<const Bytef *>(sections.mesh.constData()),
                               uInt(sections.mesh.size()))));
    put<quint64>(file, 16, icon);
    put<qint32>(file, 24, sections.icon.size());
    put<quint64>(file, 28, preview);
    put<qint32>(file, 36, sections.preview.size());
    put<quint64>(file, 40, mesh);
    put<quint64>(file, 52, settings);
    put<quint64>(file, 60, quint64(sections.settings.size()));
    put<quint64>(file, 68, quint64(sections.mesh.size()));
    return file;
}
