// Postrel: sends one plain-text mail by the account in the machine's settings, and says in one line what
// became of it.

#include "Account.h"
#include "Failure.h"
#include "MailMessage.h"
#include "SmtpSession.h"

#include <curl/curl.h>

#include <QCoreApplication>
#include <QFile>

#include <cstdio>

namespace
{
constexpr char help[] = "Postrel.exe -a EMAIL.JSON -s SUBJECT -b FILE   mails the text in FILE\n"
                        "\n"
                        "Exit codes: 0 sent, 1 wrong command line, 2 settings or file, 3 no connection,\n"
                        "4 certificate or TLS, 5 login refused, 6 sender, recipient or mail refused.";

constexpr qint64 largestBody = 16 << 20;

struct CommandLine {
    QString account;
    QString subject;
    QString bodyFile;
};

CommandLine parse(const QStringList &arguments)
{
    CommandLine line;
    for (int at = 1; at < arguments.size(); at += 2) {
        const QString &option = arguments[at];
        QString *value = option == QLatin1String("-a")   ? &line.account
                         : option == QLatin1String("-s") ? &line.subject
                         : option == QLatin1String("-b") ? &line.bodyFile
                                                         : nullptr;
        if (!value || at + 1 == arguments.size())
            throw Failure{Exit::Usage,
                          QStringLiteral("Unknown or incomplete option %1; --help lists them.").arg(option)};
        *value = arguments[at + 1];
    }
    if (line.account.isEmpty() || line.bodyFile.isEmpty())
        throw Failure{Exit::Usage, QStringLiteral("The options -a and -b are needed; --help lists them.")};
    return line;
}

QString readBody(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Failure{
            Exit::Settings,
            QStringLiteral("The text of the mail, %1, cannot be read (%2).").arg(path, file.errorString())};
    return QString::fromUtf8(file.read(largestBody));
}

/// An installation's own certificate authority, beside the tool.
QString authorityFile()
{
    const QString path = QCoreApplication::applicationDirPath() + QStringLiteral("/ca.pem");
    return QFile::exists(path) ? path : QString();
}

QString run(const CommandLine &line)
{
    const Account account = readAccount(line.account);
    const MailText mail{account.from, account.recipients, line.subject, readBody(line.bodyFile)};
    const QStringList refused = sendMail(account, mailMessage(mail), authorityFile());
    if (!refused.isEmpty())
        throw Failure{Exit::Refused,
                      QStringLiteral("Sent by %1, but it refused the recipient %2. Check the address.")
                          .arg(account.place(), refused.join(QStringLiteral(", ")))};
    return QStringLiteral("Sent to %1 by %2.")
        .arg(account.recipients.join(QStringLiteral(", ")), account.place());
}

int say(Exit code, const QString &text)
{
    std::printf("%s\n", text.toUtf8().constData());
    return int(code);
}
} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (app.arguments().contains(QStringLiteral("--help")))
        return say(Exit::Ok, QLatin1String(help));
    curl_global_init(CURL_GLOBAL_DEFAULT);
    try {
        return say(Exit::Ok, run(parse(app.arguments())));
    } catch (const Failure &failure) {
        return say(failure.code, failure.text.simplified());
    }
}
