#include "MailServer.h"

#include <QJsonDocument>

MailServer::MailServer(const QStringList &options)
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral(PELORA_PYTHON), QStringList{SMTP_SERVER} + options);
    m_port = quint16(next().value("port").toInt());
    if (m_port == 0)
        qFatal("the mail server of the tests does not start: is python3-aiosmtpd installed?");
}

MailServer::~MailServer()
{
    m_process.closeWriteChannel();
    m_process.waitForFinished(5000);
}

void MailServer::set(const QStringList &options)
{
    m_process.write(options.join(' ').toUtf8() + '\n');
    while (!next().contains("set")) { // past what earlier sessions have left
    }
}

QJsonObject MailServer::next()
{
    while (!m_process.canReadLine() && m_process.waitForReadyRead(10000)) {
    }
    return QJsonDocument::fromJson(m_process.readLine()).object();
}

void makeCertificate()
{
    const QString options = "req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -keyout key.pem "
                            "-out cert.pem -days 2 -subj /CN=localhost -addext subjectAltName=DNS:localhost";
    QProcess openssl;
    openssl.start("openssl", options.split(' '));
    if (!openssl.waitForFinished() || openssl.exitCode() != 0)
        qFatal("openssl makes no certificate");
}
