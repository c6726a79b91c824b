#include "material/TempTable.h"

#include "links/BoardCommands.h"
#include "platform/Log.h"

#include <QFile>
#include <cstring>

namespace
{
constexpr quint32 fileVersion = 16;

static_assert(sizeof(TempTable::groups) == 768, "area of the file");
static_assert(sizeof(TempTable::headTemps) == 36, "area of the file");

struct Group {
    quint8 board;
    quint8 write;
    quint8 read;
};

constexpr Group groupTable[tempGroups] = {
    {boardInk, 0x37, 0x31},  {boardInk, 0x38, 0x32},  {boardInk, 0x39, 0x33}, {boardInk, 0x3A, 0x34},
    {boardHead, 0x44, 0x41}, {boardHead, 0x45, 0x43}, {boardAir, 0x40, 0x32}, {boardAir, 0x72, 0x71},
};

void logOpenError(const QFile &file)
{
    LOG_WARNING(QStringLiteral("open temp file error %1").arg(file.errorString()));
}

template <class T> bool readBlock(QFile &file, T &block)
{
    return file.read(reinterpret_cast<char *>(&block), sizeof block) == qint64(sizeof block);
}

template <class T> bool writeBlock(QFile &file, const T &block)
{
    return file.write(reinterpret_cast<const char *>(&block), sizeof block) == qint64(sizeof block);
}
} // namespace

void fixTempGroups(TempTable &table)
{
    for (int group = 0; group < tempGroups; ++group) {
        for (int row = 0; row < tempRows; ++row) {
            CanMsg &message = table.groups[group][row];
            message.id = groupTable[group].board;
            message.data[0] = row == tempMeasuredRow ? groupTable[group].read : groupTable[group].write;
        }
    }
}

quint32 zoneEventId(const TempTable &table, int group, int zone)
{
    const CanMsg &read = table.groups[group][tempMeasuredRow];
    return (read.id << 16) | (quint32(groupTable[group].read) << 8) | quint32(zone);
}

bool readTempTable(const QString &path, TempTable &table)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        logOpenError(file);
        return false;
    }
    quint32 version = 0;
    if (readBlock(file, version) && version != fileVersion)
        return false;
    TempTable read;
    if (version != fileVersion || !readBlock(file, read.groups) || !readBlock(file, read.headTemps)) {
        LOG_WARNING(QStringLiteral("temp file is too short"));
        return false;
    }
    table = read;
    return true;
}

bool writeTempTable(const QString &path, const TempTable &table)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        logOpenError(file);
        return false;
    }
    if (writeBlock(file, fileVersion) && writeBlock(file, table.groups) &&
        writeBlock(file, table.headTemps) && file.flush())
        return true;
    LOG_WARNING(QStringLiteral("write temp file error %1").arg(file.errorString()));
    return false;
}
