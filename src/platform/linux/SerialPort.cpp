#include "platform/SerialPort.h"

#include "platform/PlatformSettings.h"

#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <mutex>
#include <poll.h>
#include <shared_mutex>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace
{
constexpr int readSliceMs = 5;   // how long read() waits for a first byte
constexpr int writeSliceMs = 10; // how often a blocked write() looks whether the port is being closed

struct BaudRate {
    int baud;
    speed_t speed;
};
constexpr BaudRate baudRates[] = {{9600, B9600},   {19200, B19200},   {38400, B38400},
                                  {57600, B57600}, {115200, B115200}, {230400, B230400}};

QString devicePath(int portNumber)
{
    const QString configured = platformSetting(QStringLiteral("COM%1").arg(portNumber)).toString();
    return configured.isEmpty() ? QStringLiteral("/dev/ttyS%1").arg(portNumber - 1) : configured;
}

/// Raw 8N1 without flow control. False with errno set when the device refuses it or is no serial line.
bool setLine(int fd, int baud)
{
    const auto *rate = std::find_if(std::begin(baudRates), std::end(baudRates),
                                    [baud](const BaudRate &r) { return r.baud == baud; });
    if (rate == std::end(baudRates)) {
        errno = EINVAL;
        return false;
    }
    termios line{};
    if (tcgetattr(fd, &line) != 0)
        return false;
    cfmakeraw(&line);
    line.c_cflag &= ~static_cast<tcflag_t>(CSTOPB | CRTSCTS);
    line.c_cflag |= CLOCAL | CREAD;
    line.c_cc[VMIN] = 0;
    line.c_cc[VTIME] = 0;
    cfsetispeed(&line, rate->speed);
    cfsetospeed(&line, rate->speed);
    return tcsetattr(fd, TCSANOW, &line) == 0 && tcflush(fd, TCIOFLUSH) == 0;
}

short waitFor(int fd, short what, int timeoutMs)
{
    pollfd entry{fd, what, 0};
    return ::poll(&entry, 1, timeoutMs) > 0 ? entry.revents : short(0);
}
} // namespace

struct SerialPort::Private {
    std::shared_mutex use; // shared by the reader and the writer; alone for open and close, which change fd
    int fd = -1;
    std::atomic<bool> closing{false}; // lets close() past a reader that asks again and again
    std::atomic<int> error{0};
};

SerialPort::SerialPort() : d(new Private) {}

SerialPort::~SerialPort()
{
    close();
}

bool SerialPort::open(int portNumber, int baud)
{
    close();
    std::unique_lock<std::shared_mutex> lock(d->use);
    const int fd = ::open(QFile::encodeName(devicePath(portNumber)).constData(),
                          O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0 || !setLine(fd, baud)) {
        d->error = errno;
        if (fd >= 0)
            ::close(fd);
        return false;
    }
    d->fd = fd;
    return true;
}

void SerialPort::close()
{
    d->closing = true;
    std::unique_lock<std::shared_mutex> lock(d->use);
    if (d->fd >= 0)
        ::close(d->fd);
    d->fd = -1;
    d->closing = false;
}

bool SerialPort::isOpen() const
{
    std::shared_lock<std::shared_mutex> lock(d->use);
    return d->fd >= 0;
}

int SerialPort::write(const quint8 *bytes, int length, unsigned timeoutMs)
{
    std::shared_lock<std::shared_mutex> lock(d->use);
    QElapsedTimer timer;
    timer.start();
    int done = 0;
    while (done < length) {
        const ssize_t count = ::write(d->fd, bytes + done, size_t(length - done));
        if (count > 0) {
            done += int(count);
            continue;
        }
        if (count < 0 && errno != EAGAIN && errno != EINTR) {
            d->error = errno;
            return 0;
        }
        const qint64 left = qint64(timeoutMs) - timer.elapsed();
        if (left <= 0 || d->closing)
            break;
        waitFor(d->fd, POLLOUT, int(std::min<qint64>(left, writeSliceMs)));
    }
    return done;
}

void SerialPort::flush(unsigned timeoutMs)
{
    std::shared_lock<std::shared_mutex> lock(d->use);
    QElapsedTimer timer;
    timer.start();
    int queued = 0;
    while (::ioctl(d->fd, TIOCOUTQ, &queued) == 0 && queued > 0 && !timer.hasExpired(timeoutMs) && !d->closing)
        waitFor(-1, 0, 1);
}

int SerialPort::read(quint8 *buffer, int capacity)
{
    if (d->closing) {
        waitFor(-1, 0, 1);
        return -1;
    }
    std::shared_lock<std::shared_mutex> lock(d->use);
    const short state = waitFor(d->fd, POLLIN, readSliceMs);
    if (state == 0 && d->fd >= 0)
        return 0;
    const ssize_t count = ::read(d->fd, buffer, size_t(std::max(capacity, 0)));
    if (count > 0)
        return int(count);
    if (count < 0 && (errno == EAGAIN || errno == EINTR))
        return 0;
    d->error = count < 0 ? errno : EIO; // nothing to read though something was announced: the line hung up
    if (d->fd >= 0)
        waitFor(-1, 0, readSliceMs); // a caller that asks again and again must not take the processor
    return -1;
}

int SerialPort::lastError() const
{
    return d->error;
}
