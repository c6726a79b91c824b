#include "platform/WriteThroughFile.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace
{
bool writeAll(int fd, const char *bytes, int length)
{
    while (length > 0) {
        const ssize_t count = ::write(fd, bytes, size_t(length));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        bytes += count;
        length -= int(count);
    }
    return true;
}
} // namespace

bool writeThrough(const QString &path, const char *bytes, int length)
{
    const int fd =
        ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_TRUNC | O_SYNC | O_CLOEXEC, 0644);
    if (fd < 0)
        return false;
    bool written = writeAll(fd, bytes, length);
    written = ::fsync(fd) == 0 && written;
    return ::close(fd) == 0 && written;
}

bool flushToDisk(QFileDevice &file)
{
    if (!file.flush() || ::fsync(file.handle()) != 0)
        return false;
    const QByteArray folder = QFile::encodeName(QFileInfo(file.fileName()).path());
    const int fd = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return false;
    const bool flushed = ::fsync(fd) == 0;
    ::close(fd);
    return flushed;
}
