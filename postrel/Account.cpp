#include "Account.h"

#include "Failure.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace
{
constexpr int tlsPort = 465;        // TLS from the first byte
constexpr int submissionPort = 587; // STARTTLS where the server offers it
constexpr int highestPort = 65535;
constexpr qint64 largestFile = 1 << 20;

QJsonObject readJson(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Failure{
            Exit::Settings,
            QStringLiteral("The mail settings %1 cannot be read (%2). Enter them on the e-mail page.")
                .arg(path, file.errorString())};
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(file.read(largestFile), &error);
    if (!document.isObject())
        throw Failure{
            Exit::Settings,
            QStringLiteral("The mail settings %1 are damaged (%2). Enter them anew on the e-mail page.")
                .arg(path, error.errorString())};
    return document.object();
}

/// "host", "host:port", "[address]:port".
void splitHost(const QString &text, Account *account)
{
    static const QRegularExpression form(QStringLiteral("^(\\[[^\\]]+\\]|[^\\s:/@]+)(?::(\\d{1,5}))?$"));
    const QRegularExpressionMatch match = form.match(text);
    account->port = match.captured(2).isEmpty() ? (account->sslOnConnect ? tlsPort : submissionPort)
                                                : match.captured(2).toInt();
    if (!match.hasMatch() || account->port < 1 || account->port > highestPort)
        throw Failure{Exit::Settings,
                      QStringLiteral("The mail server \"%1\" is no host name. Enter a name such as "
                                     "mail.example.com, or name:port.")
                          .arg(text)};
    account->host = match.captured(1);
}

/// A blank or a bracket within an address would be read as another command by the server.
void checkAddress(const QString &address, const char *what)
{
    static const QRegularExpression form(QStringLiteral("^[^\\s<>,\"\\x{0}-\\x{1f}\\x{7f}]+$"));
    if (!form.match(address).hasMatch())
        throw Failure{
            Exit::Settings,
            QStringLiteral("The %1 \"%2\" is no e-mail address. Separate addresses with semicolons.")
                .arg(QLatin1String(what), address.simplified())};
}

QStringList splitRecipients(QString text)
{
    text.replace(QChar(0xff1b), QLatin1Char(';')); // the semicolon of Chinese keyboards
    QStringList recipients;
    for (const QString &part : text.split(QLatin1Char(';'))) {
        const QString recipient = part.trimmed();
        if (recipient.isEmpty())
            continue;
        checkAddress(recipient, "recipient");
        recipients << recipient;
    }
    return recipients;
}
} // namespace

Account readAccount(const QString &path)
{
    const QJsonObject json = readJson(path);
    const auto text = [&json](const char *key) {
        return json.value(QLatin1String(key)).toString().trimmed();
    };
    Account account;
    account.sslOnConnect = json.value(QLatin1String("SslOnConnect")).toBool();
    account.from = text("From");
    account.password = json.value(QLatin1String("Password")).toString();
    account.recipients = splitRecipients(text("Cc"));
    const struct {
        bool missing;
        const char *what;
    } needs[] = {{text("Host").isEmpty(), "mail server"},
                 {account.from.isEmpty(), "sender address"},
                 {account.recipients.isEmpty(), "recipient"}};
    for (const auto &need : needs) {
        if (need.missing)
            throw Failure{
                Exit::Settings,
                QStringLiteral("No %1 is set. Enter it on the e-mail page.").arg(QLatin1String(need.what))};
    }
    checkAddress(account.from, "sender");
    splitHost(text("Host"), &account);
    return account;
}
