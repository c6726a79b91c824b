#pragma once
// A mail server of its own process on a loopback port, and a certificate for it that nobody has signed.

#include <QJsonObject>
#include <QProcess>
#include <QStringList>

class MailServer
{
public:
    /// Options are those of smtp_server.py. Fails hard when there is no server.
    explicit MailServer(const QStringList &options);
    ~MailServer();

    quint16 port() const { return m_port; }
    /// Other options, apart from TLS, for what connects from now on.
    void set(const QStringList &options);
    /// The next mail that it took or login that it saw; empty when none comes.
    QJsonObject next();

private:
    QProcess m_process;
    quint16 m_port = 0;
};

/// Makes cert.pem and key.pem for "localhost" in the working directory.
void makeCertificate();
