#include "events/Smtp.h"

#include <QDeadlineTimer>
#include <QDebug>

namespace
{
QString base64(const QString &text)
{
    return QString::fromLatin1(text.toUtf8().toBase64());
}

/// As the wire wants it: lines end with CR and LF, and a dot that begins one is doubled.
QString wireText(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString &line : lines) {
        if (line.startsWith(QLatin1Char('.')))
            line.prepend(QLatin1Char('.'));
    }
    return lines.join(QLatin1String("\r\n"));
}

constexpr int longestReply = 65536; // characters; what is longer is no mail server's

/// A blank after the code marks the last line of a reply, a hyphen one that others follow.
bool isLastLine(const QByteArray &line)
{
    return line.size() <= 3 || line[3] != '-';
}
} // namespace

Smtp::Smtp(const QString &user, const QString &password, int replyLimitMs)
    : m_user(user), m_password(password), m_replyLimitMs(replyLimitMs)
{
    m_socket.setReadBufferSize(longestReply);
    connect(this, &Smtp::SendLine, this, &Smtp::PutSendLine);
}

bool Smtp::connectToServer(const QString &host, quint16 port, bool ssl)
{
    m_socket.abort();
    if (ssl)
        m_socket.connectToHostEncrypted(host, port);
    else
        m_socket.connectToHost(host, port);
    if (ssl ? !m_socket.waitForEncrypted(m_replyLimitMs) : !m_socket.waitForConnected(m_replyLimitMs)) {
        emit status(m_socket.errorString());
        return false;
    }
    m_response = readReply();
    if (isAnswered("220"))
        return true;
    m_socket.abort();
    return false;
}

bool Smtp::send(const QStringList &recipients, const QString &mailText)
{
    m_state = Hello;
    m_responses.clear();
    m_recipients = recipients;
    m_mailText = wireText(mailText);
    PutSendLine();
    return m_state == Quit;
}

bool Smtp::PutSendLine()
{
    switch (m_state) {
    case Hello:
        return step(QStringLiteral("ehlo localhost"), "");
    case Login:
        return step(QStringLiteral("AUTH LOGIN"), "");
    case User:
        return step(base64(m_user), "334", "(user)");
    case Password:
        return step(base64(m_password), "235", "(password)");
    case Sender:
        return step(QStringLiteral("MAIL FROM: <%1>").arg(m_user), "");
    case Recipients:
        return stepRecipients();
    case Text:
        return step(m_mailText + QStringLiteral("\r\n."), "ok");
    case Quit:
        sendLine(QStringLiteral("QUIT"));
        m_socket.disconnectFromHost();
        return true;
    }
    return false;
}

bool Smtp::stepRecipients()
{
    for (const QString &recipient : qAsConst(m_recipients)) {
        m_responses << sendLine(QStringLiteral("RCPT TO: <%1>").arg(recipient));
        emit status(m_responses.last());
    }
    return step(QStringLiteral("DATA"), "");
}

/// Sends a line and, if the answer holds `wanted`, has the next step run.
bool Smtp::step(const QString &line, const char *wanted, const char *shown)
{
    m_response = sendLine(line, shown);
    m_responses << m_response;
    if (!isAnswered(wanted))
        return false;
    ++m_state;
    emit SendLine();
    return true;
}

bool Smtp::isAnswered(const char *wanted)
{
    emit status(m_response.isEmpty() ? m_socket.errorString() : m_response);
    return !m_response.isEmpty() && m_response.contains(QLatin1String(wanted));
}

/// `shown`: what the log shows in place of a secret.
QString Smtp::sendLine(const QString &text, const char *shown)
{
    qDebug() << (shown ? QString::fromLatin1(shown) : text);
    m_socket.write(text.toUtf8() + "\r\n");
    m_socket.flush();
    if (text == QLatin1String("QUIT"))
        return {};
    const QString response = readReply();
    qDebug() << response;
    return response;
}

/// Every line that is there, up to the end of a reply; empty when none comes in time.
QString Smtp::readReply()
{
    QString reply;
    bool complete = false;
    const QDeadlineTimer deadline(m_replyLimitMs);
    while (reply.size() < longestReply && (!complete || m_socket.canReadLine())) {
        if (!m_socket.canReadLine()) {
            if (!m_socket.waitForReadyRead(int(deadline.remainingTime())))
                break;
            continue;
        }
        const QByteArray line = m_socket.readLine().trimmed();
        reply += QString::fromUtf8(line) + QLatin1Char('\n');
        complete = isLastLine(line);
    }
    return reply;
}
