#include "Pty.h"

#include <QFile>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

Pty::~Pty()
{
    m_notifier.reset();
    if (m_slave >= 0)
        ::close(m_slave);
    if (m_master >= 0)
        ::close(m_master);
    if (!m_link.isEmpty())
        QFile::remove(m_link);
}

bool Pty::open(const QString &link, QString *error)
{
    m_master = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    char name[128];
    if (m_master < 0 || ::grantpt(m_master) || ::unlockpt(m_master) ||
        ::ptsname_r(m_master, name, sizeof name)) {
        *error = QStringLiteral("no pseudo terminal: %1").arg(std::strerror(errno));
        return false;
    }
    m_slave = ::open(name, O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios settings = {};
    if (m_slave < 0 || ::tcgetattr(m_slave, &settings)) {
        *error = QStringLiteral("%1: %2").arg(name, std::strerror(errno));
        return false;
    }
    ::cfmakeraw(&settings);
    ::tcsetattr(m_slave, TCSANOW, &settings);
    QFile::remove(link);
    if (!QFile::link(name, link)) {
        *error = link + ": the link cannot be made";
        return false;
    }
    m_link = link;
    m_notifier = std::make_unique<QSocketNotifier>(m_master, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &Pty::readAll);
    return true;
}

void Pty::readAll()
{
    char buffer[4096];
    ssize_t count = 0;
    while ((count = ::read(m_master, buffer, sizeof buffer)) > 0)
        emit received(QByteArray(buffer, int(count)));
}

/// What the line cannot take is lost, as on a wire that nobody reads.
void Pty::write(const QByteArray &bytes)
{
    if (::write(m_master, bytes.constData(), size_t(bytes.size())) < 0 && errno != EAGAIN)
        qWarning("the line cannot be written: %s", std::strerror(errno));
}
