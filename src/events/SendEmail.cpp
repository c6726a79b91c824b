#include "events/SendEmail.h"

#include "frame/JsonConfig.h"
#include "platform/Log.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

namespace
{
const QString emailFile = QStringLiteral("config/email.json");
constexpr int killLimitMs = 1000;
constexpr int bodyNames = 60; // mails within one second; far more than there are threads

/// Opens a new file for a mail's body. Its name is the time in seconds; while another mail still has that
/// name, the next second's is taken, so that two mails never share a body.
bool openBody(QFile *file)
{
    const qint64 now = QDateTime::currentSecsSinceEpoch();
    for (int taken = 0; taken < bodyNames; ++taken) {
        file->setFileName(QStringLiteral("%1/%2").arg(QDir::tempPath()).arg(now + taken));
        if (file->open(QIODevice::WriteOnly | QIODevice::NewOnly))
            return true;
        if (!file->exists())
            return false; // no folder to write to, rather than a name that is taken
    }
    return false;
}

bool writeBody(QFile *file, const QString &body)
{
    if (!openBody(file))
        return false;
    file->write(body.toUtf8());
    file->close();
    return true;
}

/// Everything the tool wrote within the limit.
QByteArray runTool(const QStringList &arguments, int limitMs)
{
    QProcess tool;
    tool.setProcessChannelMode(QProcess::MergedChannels);
    tool.start(QStringLiteral("Postrel/Postrel.exe"), arguments);
    const bool ended = tool.waitForFinished(limitMs);
    const QByteArray output = tool.readAll();
    if (!ended)
        LOG_WARNING(tool.errorString()); // the tool is not there, or hangs
    if (tool.state() != QProcess::NotRunning) {
        tool.kill();
        tool.waitForFinished(killLimitMs);
    }
    return output;
}
} // namespace

JsonConfig *emailConfig()
{
    static auto *config = new JsonConfig(emailFile);
    return config;
}

QByteArray SendEmail(const QString &subject, const QString &body, int limitMs)
{
    if (body.isEmpty())
        return {};
    QFile bodyFile;
    if (!writeBody(&bodyFile, body))
        return {};
    // As a list, since a double quote in a subject would end the argument of a command line.
    const QString account = QFileInfo(emailFile).absolutePath() + QStringLiteral("/email.json");
    const QByteArray output = runTool({QStringLiteral("-a"), account, QStringLiteral("-s"), subject,
                                       QStringLiteral("-b"), bodyFile.fileName()},
                                      limitMs);
    LOG_WARNING(QString::fromUtf8(output));
    bodyFile.remove();
    return '\n' + output;
}
