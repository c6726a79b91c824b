#pragma once
// One JSON object a line and one answer a line over a local socket: the operator plug-in and the machine's control.

#include <QJsonObject>
#include <QLocalSocket>
#include <QString>

class JsonLineClient
{
public:
    /// Connects, trying again until `timeoutMs` is over: the other side may still be starting.
    bool connectTo(const QString &path, int timeoutMs);
    /// Sends and waits for the answer; {"ok":false,"error":...} when none comes in time.
    QJsonObject call(const QJsonObject &request, int timeoutMs = 30000);

private:
    QLocalSocket m_socket;
};
