#include "ControlServer.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QLocalSocket>

ControlServer::ControlServer(CommandContext context, QObject *parent)
    : QObject(parent), m_context(std::move(context))
{
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket *socket = m_server.nextPendingConnection()) {
            connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
                while (socket->canReadLine()) {
                    socket->write(QJsonDocument(answer(socket->readLine())).toJson(QJsonDocument::Compact) +
                                  '\n');
                    socket->flush();
                }
            });
            connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        }
    });
}

bool ControlServer::listen(const QString &path, QString *error)
{
    QLocalServer::removeServer(path);
    if (m_server.listen(path))
        return true;
    *error = path + ": " + m_server.errorString();
    return false;
}

QJsonObject ControlServer::answer(const QByteArray &line)
{
    QStringList words;
    for (const QJsonValue &word : QJsonDocument::fromJson(line)["cmd"].toArray())
        words << word.toVariant().toString();
    if (words.isEmpty())
        return {{"ok", false}, {"error", "a line holds one object {\"cmd\":[\"NAME\", ...]}"}};
    return runCommand(m_context, words);
}
