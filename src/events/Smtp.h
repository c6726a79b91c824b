#pragma once
// A small SMTP client for an installation without the mail tool. Nothing in the program makes one.

#include <QByteArray>
#include <QObject>
#include <QSslSocket>
#include <QStringList>

/// Blocks its caller with every step. One thread, with or without an event loop.
class Smtp : public QObject
{
    Q_OBJECT
public:
    /// The user is also the sender. `replyLimitMs` holds for connecting and for each reply.
    Smtp(const QString &user, const QString &password, int replyLimitMs = 10000);

    /// Connects, with TLS from the first byte if wished, and reads the greeting. False: status() told why.
    bool connectToServer(const QString &host, quint16 port, bool ssl);
    /// Sends a mail, headers and body with line breaks, over a fresh connection. True once the server has
    /// taken it.
    bool send(const QStringList &recipients, const QString &mailText);

    /// The step that comes next, or that failed; 8 after a mail that was taken.
    int state() const { return m_state; }
    /// What the server said to each step so far.
    QStringList responses() const { return m_responses; }

signals:
    /// The answer to a step, or why there is none.
    void status(QString text);
    /// A step has gone well: runs the next.
    void SendLine();

public slots:
    /// Runs one step. False when the server's answer does not let the session go on.
    bool PutSendLine();

private:
    enum State { Hello = 1, Login, User, Password, Sender, Recipients, Text, Quit };

    bool step(const QString &line, const char *wanted, const char *shown = nullptr);
    bool stepRecipients();
    bool isAnswered(const char *wanted);
    QString sendLine(const QString &text, const char *shown = nullptr);
    QString readReply();

    QSslSocket m_socket; ///< also for plain connections
    int m_state = Hello;
    QStringList m_responses;
    QString m_user;
    QString m_password;
    QString m_mailText;
    QStringList m_recipients;
    QString m_response; ///< the last one
    const int m_replyLimitMs;
};
