#include "JsonLineClient.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QThread>

bool JsonLineClient::connectTo(const QString &path, int timeoutMs)
{
    QElapsedTimer clock;
    clock.start();
    do {
        m_socket.abort();
        m_socket.connectToServer(path);
        if (m_socket.waitForConnected(500))
            return true;
        QThread::msleep(10);
    } while (clock.elapsed() < timeoutMs);
    return false;
}

QJsonObject JsonLineClient::call(const QJsonObject &request, int timeoutMs)
{
    const auto failure = [](const QString &why) { return QJsonObject{{"ok", false}, {"error", why}}; };
    m_socket.write(QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n');
    m_socket.flush();
    QElapsedTimer clock;
    clock.start();
    while (!m_socket.canReadLine()) {
        const int left = timeoutMs - int(clock.elapsed());
        if (left <= 0)
            return failure(QStringLiteral("no answer within %1 ms").arg(timeoutMs));
        if (!m_socket.waitForReadyRead(left) && m_socket.state() != QLocalSocket::ConnectedState)
            return failure(QStringLiteral("the other side is gone"));
    }
    const QJsonDocument answer = QJsonDocument::fromJson(m_socket.readLine());
    return answer.isObject() ? answer.object() : failure(QStringLiteral("the answer is no JSON object"));
}
