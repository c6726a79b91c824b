#pragma once
// The TCP service for one PC client: the newest wins. Its thread does every remote command.

#include "remote/NetWorkProtocol.h"

#include <QThread>

#include <atomic>

class QTcpServer;

class CTcpServer : public QThread, public NetWorkProtocol
{
    Q_OBJECT
public:
    explicit CTcpServer(const QVector<RemoteCommand> &commands = remoteCommands());
    /// Ends the thread; the program's own service is never destroyed.
    ~CTcpServer() override;

    /// Where it listens; 0 while it does not. Any thread.
    quint16 port() const { return m_port; }

protected:
    void run() override;

private:
    void listen(QTcpServer &server);
    void acceptClient(QTcpServer &server);
    void dropClient();

    std::atomic<quint16> m_port{0};
};

/// The process's one service; it has to be started. Any thread.
CTcpServer *tcpServer();

/// The port that clients are told: config/Platform.json "RemotePort", else 6666. Any thread.
quint16 remotePort();

/// Has another thread tell the client something.
class CTcpClient : public QObject
{
    Q_OBJECT
public:
    explicit CTcpClient(NetWorkProtocol *protocol, QObject *parent = nullptr);

public slots:
    void NotifyTcpClient(QByteArray b);

private:
    NetWorkProtocol *const m_protocol;
};
