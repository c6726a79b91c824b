#pragma once
// One JSON request of the remote client while it is worked on, and the way to answer it.

#include <QByteArray>
#include <QJsonObject>
#include <functional>

/// The first two bytes of a reply.
enum class ReplyHead {
    Echo, ///< those of the request
    Own,  ///< 0x5A 0xA5
};

/// Link thread only.
class RemoteCall
{
public:
    /// Sends a payload in a JSON frame.
    using Send = std::function<void(const QByteArray &payload, ReplyHead head)>;

    RemoteCall(const QJsonObject &request, const QByteArray &text, Send send)
        : m_request(request), m_text(text), m_send(std::move(send))
    {
    }

    const QJsonObject &request() const { return m_request; }
    /// What an absent key reads as: 0, false, empty.
    QJsonValue operator[](const char *key) const { return m_request.value(QLatin1String(key)); }
    /// The payload as it came, all the bytes that the frame announced.
    const QByteArray &text() const { return m_text; }

    /// The indented text of the object.
    void reply(const QJsonObject &object, ReplyHead head) const;
    /// The request with keys added.
    void replyWith(const QString &key, const QJsonValue &value, ReplyHead head) const;
    void replyText(const QByteArray &payload, ReplyHead head) const { m_send(payload, head); }

private:
    const QJsonObject &m_request;
    const QByteArray &m_text;
    Send m_send;
};
