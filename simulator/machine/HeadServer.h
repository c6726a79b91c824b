#pragma once
// Answers the stand-in of the head boards' library.

#include "HeadCalls.h"

#include <QLocalServer>
#include <QLocalSocket>
#include <QPointer>
#include <QTimer>
#include <vector>

class Machine;

class HeadServer : public QObject
{
    Q_OBJECT
public:
    explicit HeadServer(Machine &machine, QObject *parent = nullptr);
    bool listen(const QString &path, QString *error);

private:
    struct Waiter {
        QPointer<QLocalSocket> socket;
        uint32_t sequence;
    };

    void onReadable(QLocalSocket *socket);
    void onRequest(QLocalSocket *socket, const heads::RequestHead &head, const QByteArray &body);
    void reply(QLocalSocket *socket, uint32_t sequence, int result, const heads::Numbers &values);
    void serveWaiters();

    Machine &m_machine;
    QLocalServer m_server;
    std::vector<Waiter> m_waiters;
    QTimer m_waitTimer;
};
