#include "platform/DiskSpace.h"

#include "platform/PlatformSettings.h"

#include <QFile>

#include <sys/statvfs.h>

DiskSpace diskSpace(const QString &path)
{
    constexpr double gigabyte = 1024.0 * 1024.0 * 1024.0;
    DiskSpace space;
    struct statvfs disk {
    };
    if (::statvfs(QFile::encodeName(path.isEmpty() ? QStringLiteral(".") : path).constData(), &disk) == 0) {
        space.totalGB = double(disk.f_blocks) * double(disk.f_frsize) / gigabyte;
        space.availableGB = double(disk.f_bavail) * double(disk.f_frsize) / gigabyte;
    }
    space.totalGB = platformSetting(QStringLiteral("DiskTotalGB")).toDouble(space.totalGB);
    space.availableGB = platformSetting(QStringLiteral("DiskAvailableGB")).toDouble(space.availableGB);
    return space;
}
