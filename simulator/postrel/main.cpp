// The stand-in mail tool: a mail becomes a file.

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryFile>

#include <cstdio>

namespace
{
constexpr char help[] =
    "Postrel.exe -a EMAIL.JSON -s SUBJECT -b FILE   writes the mail as mail-0001.json, mail-0002.json, ...\n"
    "\n"
    "The environment's PELORA_MAIL_FOLDER is the folder; else ../.PeloraTemp/machine/mail.";

constexpr int mostMails = 100000;

int fail(const QString &why)
{
    std::printf("%s\n", qUtf8Printable(why));
    return 1;
}

QString mailFolder()
{
    const QString folder = qEnvironmentVariable("PELORA_MAIL_FOLDER");
    return folder.isEmpty() ? QStringLiteral("../.PeloraTemp/machine/mail") : folder;
}

QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QJsonObject mail(const QString &account, const QString &subject, const QString &body)
{
    const QJsonObject settings = QJsonDocument::fromJson(read(account)).object();
    QJsonArray to;
    for (const QString &part : settings.value(QLatin1String("Cc")).toString().split(QLatin1Char(';'))) {
        if (!part.trimmed().isEmpty())
            to << part.trimmed();
    }
    return {{QStringLiteral("time"), QDateTime::currentDateTime().toString(Qt::ISODate)},
            {QStringLiteral("from"), settings.value(QLatin1String("From"))},
            {QStringLiteral("to"), to},
            {QStringLiteral("subject"), subject},
            {QStringLiteral("body"), QString::fromUtf8(read(body))}};
}

/// The mail's path; empty when it cannot be written. Whoever sees the name sees the whole mail.
QString write(const QByteArray &text)
{
    const QString folder = mailFolder();
    QDir().mkpath(folder);
    QTemporaryFile file(folder + QStringLiteral("/.mail"));
    if (!file.open() || file.write(text) != text.size())
        return {};
    for (int number = 1; number < mostMails; ++number) {
        const QString path =
            QStringLiteral("%1/mail-%2.json").arg(folder).arg(number, 4, 10, QLatin1Char('0'));
        if (!QFile::exists(path) && file.rename(path)) { // rename takes no name that another has taken
            file.setAutoRemove(false);
            return path;
        }
    }
    return {};
}
} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    if (arguments.contains(QStringLiteral("--help"))) {
        std::printf("%s\n", help);
        return 0;
    }
    const auto option = [&arguments](const char *name) {
        const int at = arguments.indexOf(QLatin1String(name));
        return at < 0 ? QString() : arguments.value(at + 1);
    };
    const QString account = option("-a"), body = option("-b");
    if (account.isEmpty() || !QFile::exists(body))
        return fail(
            QStringLiteral("The options -a and -b are needed, and the text's file; --help lists them."));
    const QString path = write(QJsonDocument(mail(account, option("-s"), body)).toJson());
    if (path.isEmpty())
        return fail(QStringLiteral("The mail cannot be written to %1.").arg(mailFolder()));
    std::printf("Written to %s\n", qUtf8Printable(path));
    return 0;
}
