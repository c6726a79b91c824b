#include "SerialLine.h"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <termios.h>
#include <unistd.h>

SerialLine::SerialLine()
{
    m_master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
    std::array<char, 64> name{};
    if (m_master < 0 || grantpt(m_master) || unlockpt(m_master) ||
        ptsname_r(m_master, name.data(), name.size()))
        qFatal("no pseudo terminal");
    m_path = QString::fromLocal8Bit(name.data());
    m_slave = open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios settings{};
    tcgetattr(m_slave, &settings);
    cfmakeraw(&settings);
    tcsetattr(m_slave, TCSANOW, &settings);
    m_wake = eventfd(0, EFD_CLOEXEC);
}

SerialLine::~SerialLine()
{
    hangUp();
    close(m_wake);
}

void SerialLine::start(Received received)
{
    m_thread = std::thread([this, received = std::move(received)] { run(received); });
}

void SerialLine::hangUp()
{
    if (m_thread.joinable()) {
        eventfd_write(m_wake, 1);
        m_thread.join();
    }
    std::lock_guard<std::mutex> lock(m_writeMutex);
    if (m_master < 0)
        return;
    close(m_slave);
    close(m_master);
    m_master = -1;
}

void SerialLine::send(const QByteArray &bytes)
{
    std::lock_guard<std::mutex> lock(m_writeMutex);
    for (int done = 0; m_master >= 0 && done < bytes.size();) {
        const ssize_t count = write(m_master, bytes.constData() + done, size_t(bytes.size() - done));
        if (count > 0) {
            done += int(count);
            continue;
        }
        pollfd full{m_master, POLLOUT, 0};
        if (poll(&full, 1, 2000) <= 0)
            return;
    }
}

void SerialLine::run(const Received &received)
{
    for (;;) {
        pollfd ready[] = {{m_master, POLLIN, 0}, {m_wake, POLLIN, 0}};
        if (poll(ready, 2, -1) < 0 || ready[1].revents)
            return;
        QByteArray chunk(4096, Qt::Uninitialized);
        const ssize_t count = read(m_master, chunk.data(), size_t(chunk.size()));
        if (count > 0)
            received(chunk.left(int(count)));
    }
}
