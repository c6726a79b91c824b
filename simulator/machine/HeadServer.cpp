#include "HeadServer.h"

#include "Machine.h"

#include <cmath>

using heads::Op;

namespace
{
constexpr double waitGrainMs = 20; ///< how often a page that nobody knows the end of is looked at
} // namespace

HeadServer::HeadServer(Machine &machine, QObject *parent) : QObject(parent), m_machine(machine)
{
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    m_waitTimer.setSingleShot(true);
    m_waitTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_waitTimer, &QTimer::timeout, this, &HeadServer::serveWaiters);
    connect(&m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket *socket = m_server.nextPendingConnection()) {
            connect(socket, &QLocalSocket::readyRead, this, [this, socket] { onReadable(socket); });
            connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        }
    });
}

bool HeadServer::listen(const QString &path, QString *error)
{
    QLocalServer::removeServer(path);
    if (m_server.listen(path))
        return true;
    *error = path + ": " + m_server.errorString();
    return false;
}

void HeadServer::onReadable(QLocalSocket *socket)
{
    for (;;) {
        heads::RequestHead head = {};
        if (socket->peek(reinterpret_cast<char *>(&head), sizeof head) < qint64(sizeof head))
            return;
        if (head.size > heads::requestLimit || head.size < head.argCount * sizeof(double)) {
            m_machine.violation("head-request", QString("request of %1 bytes").arg(head.size));
            socket->abort();
            return;
        }
        if (socket->bytesAvailable() < qint64(sizeof head + head.size))
            return;
        socket->skip(sizeof head);
        onRequest(socket, head, socket->read(head.size));
    }
}

void HeadServer::onRequest(QLocalSocket *socket, const heads::RequestHead &head, const QByteArray &body)
{
    m_machine.settle();
    heads::Numbers arguments(head.argCount);
    if (head.argCount)
        std::memcpy(arguments.data(), body.constData(), head.argCount * sizeof(double));
    const Op op = Op(head.op);
    if (op == Op::WaitComplete) {
        m_waiters.push_back({socket, head.sequence});
        serveWaiters();
        return;
    }
    heads::Numbers values;
    const int planesAt = int(head.argCount * sizeof(double));
    const auto planes = QByteArray::fromRawData(body.constData() + planesAt, body.size() - planesAt);
    const int result = op == Op::Arm ? heads::armPicture(m_machine, arguments, planes)
                                     : heads::runCall(m_machine, op, arguments, &values);
    if (result != heads::Done)
        m_machine.violation("head-call", QString("call %1 is refused with %2").arg(head.op).arg(result));
    if (!heads::noReply(op))
        reply(socket, head.sequence, result, values);
}

void HeadServer::reply(QLocalSocket *socket, uint32_t sequence, int result, const heads::Numbers &values)
{
    const heads::ReplyHead head = {uint32_t(values.size() * sizeof(double)), result, sequence};
    socket->write(reinterpret_cast<const char *>(&head), sizeof head);
    if (!values.empty())
        socket->write(reinterpret_cast<const char *>(values.data()), qint64(head.size));
    socket->flush();
}

/// Answers who waits for the page when it is complete, else comes back when it will be.
void HeadServer::serveWaiters()
{
    if (m_waiters.empty())
        return;
    if (m_machine.transferComplete()) {
        for (const Waiter &waiter : m_waiters) {
            if (waiter.socket)
                reply(waiter.socket, waiter.sequence, heads::Done, {});
        }
        m_waiters.clear();
        m_machine.recorder().noteComplete(m_machine.clock().wall());
        return;
    }
    const double wallMs = (m_machine.completionTime() - m_machine.now()) / m_machine.clock().scale() * 1000;
    m_waitTimer.start(int(std::ceil(std::max(0.0, std::min(wallMs, waitGrainMs)))));
}
