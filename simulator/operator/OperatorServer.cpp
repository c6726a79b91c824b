#include "OperatorServer.h"

#include "Commands.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QLocalSocket>
#include <QTimer>

namespace
{
constexpr int pollMs = 20;
constexpr int defaultWaitMs = 5000;
constexpr int maxLine = 1 << 20;

void answer(const QPointer<QLocalSocket> &socket, const QJsonObject &object)
{
    if (!socket)
        return;
    socket->write(QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n');
    socket->flush();
}
} // namespace

void OperatorServer::listen()
{
    QLocalServer::removeServer(m_path); // left by a program that was killed
    connect(&m_server, &QLocalServer::newConnection, this, &OperatorServer::accept);
    if (!m_server.listen(m_path))
        qWarning("operator: cannot listen on %s: %s", qUtf8Printable(m_path),
                 qUtf8Printable(m_server.errorString()));
}

void OperatorServer::accept()
{
    while (QLocalSocket *socket = m_server.nextPendingConnection()) {
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] { read(socket); });
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    }
}

void OperatorServer::read(QLocalSocket *socket)
{
    const QPointer<QLocalSocket> alive(socket);
    while (alive && alive->canReadLine())
        handle(alive, alive->readLine());
    if (alive && alive->bytesAvailable() > maxLine)
        alive->abort();
}

void OperatorServer::handle(const QPointer<QLocalSocket> &socket, const QByteArray &line)
{
    const QJsonDocument document = QJsonDocument::fromJson(line);
    if (!document.isObject()) {
        answer(socket, failure("the line is no JSON object"));
        return;
    }
    const QJsonObject request = document.object();
    if (request["op"].toString() == "wait")
        startWait(socket, request);
    else
        answer(socket, runCommand(request));
}

void OperatorServer::startWait(const QPointer<QLocalSocket> &socket, const QJsonObject &request)
{
    const QString bad = badWait(request);
    if (!bad.isEmpty()) {
        answer(socket, failure(bad));
        return;
    }
    const int limit = request["timeoutMs"].toInt(defaultWaitMs);
    auto *timer = new QTimer(this);
    QElapsedTimer clock;
    clock.start();
    connect(timer, &QTimer::timeout, this, [=] {
        const bool met = socket && waitIsMet(request);
        if (socket && !met && clock.elapsed() < limit)
            return;
        timer->stop();
        timer->deleteLater();
        answer(socket, met ? success() : failure(QString("not within %1 ms").arg(limit)));
    });
    timer->start(pollMs);
}
