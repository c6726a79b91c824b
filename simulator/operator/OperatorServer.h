#pragma once
// The operator's socket: one JSON object a line, one answer a line. GUI thread.
#include <QJsonObject>
#include <QLocalServer>
#include <QPointer>

class QLocalSocket;

class OperatorServer : public QObject
{
    Q_OBJECT
public:
    explicit OperatorServer(const QString &path) : m_path(path) {}
    void listen();

private:
    void accept();
    void read(QLocalSocket *socket);
    void handle(const QPointer<QLocalSocket> &socket, const QByteArray &line);
    /// Looks again and again, between the program's own events, until the condition holds or the time is up.
    void startWait(const QPointer<QLocalSocket> &socket, const QJsonObject &request);

    const QString m_path;
    QLocalServer m_server;
};
