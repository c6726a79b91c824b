#include "remote/CTcpServer.h"

#include "frame/Singleton.h"
#include "platform/Log.h"
#include "platform/PlatformSettings.h"
#include "platform/ThreadName.h"
#include "remote/RemoteAccess.h"

#include <QTcpServer>
#include <QTcpSocket>

namespace
{
constexpr int defaultPort = 6666;
} // namespace

CTcpServer *tcpServer()
{
    return singleton<CTcpServer>();
}

quint16 remotePort()
{
    const int port = platformSetting(QStringLiteral("RemotePort")).toInt(defaultPort);
    return quint16(port >= 0 && port <= 0xFFFF ? port : defaultPort);
}

CTcpServer::CTcpServer(const QVector<RemoteCommand> &commands) : NetWorkProtocol(commands) {}

CTcpServer::~CTcpServer()
{
    quit();
    wait();
}

void CTcpServer::run()
{
    setThreadName("CTcpServer");
    QTcpServer server; // all that it signals comes and is worked on this thread
    connect(&server, &QTcpServer::newConnection, [this, &server] { acceptClient(server); });
    listen(server);
    exec();
    m_port = 0;
    m_client->socket = nullptr; // it goes with the server
}

void CTcpServer::listen(QTcpServer &server)
{
    if (server.listen(remoteListenAddress(), remotePort()))
        m_port = server.serverPort();
    else
        qDebug() << "m_pTcpServer->listen() error";
}

void CTcpServer::acceptClient(QTcpServer &server)
{
    QTcpSocket *socket = server.nextPendingConnection();
    if (socket && !mayConnect(socket->peerAddress())) {
        LOG_WARNING(QStringLiteral("%1 refused").arg(socket->peerAddress().toString()));
        socket->abort();
        socket->deleteLater();
        return;
    }
    dropClient();
    if (!socket)
        return;
    const QString peer = socket->peerAddress().toString();
    LOG_WARNING(QStringLiteral("%1 connect").arg(peer));
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    m_client->socket = socket;
    connect(socket, &QTcpSocket::readyRead, [this] { readData(m_client); });
    connect(socket, &QTcpSocket::disconnected,
            [peer] { LOG_WARNING(QStringLiteral("%1 disconnect").arg(peer)); });
}

void CTcpServer::dropClient()
{
    if (QTcpSocket *old = m_client->socket) {
        disconnect(old, &QTcpSocket::readyRead, nullptr, nullptr); // its last bytes are not the next client's
        old->disconnectFromHost();
        old->deleteLater();
    }
    m_client->socket = nullptr;
    m_client->buffer.clear();
}

CTcpClient::CTcpClient(NetWorkProtocol *protocol, QObject *parent) : QObject(parent), m_protocol(protocol) {}

void CTcpClient::NotifyTcpClient(QByteArray b)
{
    m_protocol->writeGuarded(m_protocol->m_client->socket, b);
}
