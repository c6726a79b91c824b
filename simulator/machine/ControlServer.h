#pragma once
// The control socket: {"cmd":["door","inkbox","open"]} a line, one answer a line.

#include "Commands.h"

#include <QLocalServer>

class ControlServer : public QObject
{
    Q_OBJECT
public:
    explicit ControlServer(CommandContext context, QObject *parent = nullptr);
    bool listen(const QString &path, QString *error);

private:
    QJsonObject answer(const QByteArray &line);

    CommandContext m_context;
    QLocalServer m_server;
};
