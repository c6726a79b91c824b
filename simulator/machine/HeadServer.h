#pragma once
// Answers the stand-in of the head boards' library.

#include "common/HeadProtocol.h"

#include <QLocalServer>
#include <QLocalSocket>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <map>
#include <vector>

class Machine;
struct Picture;

class HeadServer : public QObject
{
    Q_OBJECT
public:
    explicit HeadServer(Machine &machine, QObject *parent = nullptr);
    bool listen(const QString &path, QString *error);

private:
    using Arguments = std::vector<double>;
    using Values = std::vector<double>;
    struct Handler {
        size_t argCount;
        /// Whether the first argument is a board or head number that must exist.
        bool first;
        std::function<int(const Arguments &, Values *)> run;
    };
    struct Waiter {
        QPointer<QLocalSocket> socket;
        uint32_t sequence;
    };

    void addPageHandlers();
    void addHeadHandlers();
    void onReadable(QLocalSocket *socket);
    void onRequest(QLocalSocket *socket, const heads::RequestHead &head, const QByteArray &body);
    int run(heads::Op op, const Arguments &arguments, Values *values);
    int arm(const Arguments &arguments, const QByteArray &planes);
    void reply(QLocalSocket *socket, uint32_t sequence, int result, const Values &values);
    void serveWaiters();

    Machine &m_machine;
    QLocalServer m_server;
    std::map<heads::Op, Handler> m_handlers;
    std::vector<Waiter> m_waiters;
    QTimer m_waitTimer;
};
