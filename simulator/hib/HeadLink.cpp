#include "HeadLink.h"

#include <QByteArray>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <cerrno>
#include <chrono>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace
{
/// Unanswered requests that may wait for the next call: more than setting a dot clock makes.
constexpr size_t gatheredLimit = 256 << 10;

QByteArray socketPath()
{
    QFile settings(QStringLiteral("config/Platform.json"));
    if (!settings.open(QIODevice::ReadOnly))
        return {};
    return QFile::encodeName(
        QJsonDocument::fromJson(settings.readAll())[QStringLiteral("HeadsSocket")].toString());
}

int64_t nowMs()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}
} // namespace

HeadLink::~HeadLink()
{
    disconnect();
}

void HeadLink::disconnect()
{
    if (m_socket >= 0)
        ::close(m_socket);
    m_socket = -1;
    m_out.clear();
}

bool HeadLink::connect()
{
    disconnect();
    const QByteArray path = socketPath();
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (path.isEmpty() || size_t(path.size()) >= sizeof address.sun_path)
        return false;
    std::memcpy(address.sun_path, path.constData(), size_t(path.size()));
    m_socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (m_socket < 0)
        return false;
    if (::connect(m_socket, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0)
        return true;
    disconnect();
    return false;
}

void HeadLink::appendBytes(const void *bytes, size_t size)
{
    const auto *from = static_cast<const uint8_t *>(bytes);
    m_out.insert(m_out.end(), from, from + size);
}

void HeadLink::append(heads::Op op, const double *arguments, size_t count, size_t extraBytes)
{
    const heads::RequestHead head = {uint32_t(count * sizeof(double) + extraBytes), uint16_t(op),
                                     uint16_t(count), ++m_sequence};
    appendBytes(&head, sizeof head);
    appendBytes(arguments, count * sizeof(double));
}

bool HeadLink::flush()
{
    size_t sent = 0;
    while (m_socket >= 0 && sent < m_out.size()) {
        const ssize_t count = ::send(m_socket, m_out.data() + sent, m_out.size() - sent, MSG_NOSIGNAL);
        if (count > 0)
            sent += size_t(count);
        else if (errno != EINTR)
            disconnect();
    }
    m_out.clear();
    return m_socket >= 0;
}

bool HeadLink::readExactly(void *target, size_t size)
{
    auto *at = static_cast<uint8_t *>(target);
    while (size > 0) {
        const ssize_t count = ::recv(m_socket, at, size, 0);
        if (count > 0) {
            at += count;
            size -= size_t(count);
        } else if (count == 0 || errno != EINTR) {
            disconnect();
            return false;
        }
    }
    return true;
}

int HeadLink::receive(std::vector<double> *values, int timeoutMs)
{
    const int64_t end = nowMs() + timeoutMs;
    for (;;) {
        pollfd waiting = {m_socket, POLLIN, 0};
        const int left = timeoutMs < 0 ? -1 : int(std::max<int64_t>(0, end - nowMs()));
        const int ready = ::poll(&waiting, 1, left);
        if (ready == 0)
            return heads::TimedOut;
        if (ready < 0 && errno == EINTR)
            continue;
        heads::ReplyHead head = {};
        if (!readExactly(&head, sizeof head))
            return heads::NoBoards;
        std::vector<double> answer(head.size / sizeof(double));
        if (!readExactly(answer.data(), answer.size() * sizeof(double)))
            return heads::NoBoards;
        if (head.sequence != m_sequence)
            continue; // the late answer to a call that ran out of time
        if (values)
            values->swap(answer);
        return head.result;
    }
}

int HeadLink::call(heads::Op op, std::initializer_list<double> arguments, std::vector<double> *values,
                   int timeoutMs)
{
    if (m_socket < 0)
        return heads::NoBoards;
    append(op, arguments.begin(), arguments.size());
    return flush() ? receive(values, timeoutMs) : int(heads::NoBoards);
}

int HeadLink::call(heads::Op op, const std::vector<double> &arguments)
{
    if (m_socket < 0)
        return heads::NoBoards;
    append(op, arguments.data(), arguments.size());
    return flush() ? receive(nullptr, -1) : int(heads::NoBoards);
}

int HeadLink::post(heads::Op op, std::initializer_list<double> arguments)
{
    if (m_socket < 0)
        return heads::NoBoards;
    append(op, arguments.begin(), arguments.size());
    if (m_out.size() > gatheredLimit && !flush())
        return heads::NoBoards;
    return heads::Done;
}

int HeadLink::arm(std::initializer_list<double> arguments, const SparsePlane &support,
                  const SparsePlane &structure)
{
    if (m_socket < 0)
        return heads::NoBoards;
    append(heads::Op::Arm, arguments.begin(), arguments.size(),
           support.bytes.size() + structure.bytes.size());
    appendBytes(support.bytes.data(), support.bytes.size());
    appendBytes(structure.bytes.data(), structure.bytes.size());
    return flush() ? receive(nullptr, -1) : int(heads::NoBoards);
}
