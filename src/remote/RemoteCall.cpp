#include "remote/RemoteCall.h"

#include <QJsonDocument>

void RemoteCall::reply(const QJsonObject &object, ReplyHead head) const
{
    m_send(QJsonDocument(object).toJson(), head);
}

void RemoteCall::replyWith(const QString &key, const QJsonValue &value, ReplyHead head) const
{
    QJsonObject object = m_request;
    object.insert(key, value);
    reply(object, head);
}
