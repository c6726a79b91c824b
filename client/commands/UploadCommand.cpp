// Bringing models in.

#include "commands/Command.h"
#include "commands/Session.h"
#include "link/Failure.h"
#include "link/Upload.h"
#include "output/Terminal.h"

#include <QFile>
#include <QFileInfo>

namespace
{
constexpr int attemptsPerBlock = 5;

/// What the machine could not keep as one file below its folder of models.
void checkName(const QString &name)
{
    constexpr int longestName = 250; // bytes; file systems take 255, and the machine adds an ending
    const bool path = name.contains(QLatin1Char('/')) || name.contains(QLatin1Char('\\')) ||
                      name == QLatin1String(".") || name == QLatin1String("..");
    if (name.isEmpty() || path || name.contains(QChar(0)) || name.toUtf8().size() > longestName)
        throw Failure{Exit::Usage,
                      QStringLiteral("\"%1\" is no name for a model: it must be a plain file name of at "
                                     "most %2 bytes.")
                          .arg(name)
                          .arg(longestName)};
}

QJsonArray queueRow(Session &session, const QString &name)
{
    return session.rows(
        QStringLiteral("select ModelName,status,SumLayer,printTime,'' as Icon from PrintQueue "
                       "where ModelName=%1 order by ID")
            .arg(quoted(name)));
}

void refuseRunningModel(Session &session, const QString &name)
{
    if (session.arguments().has("force") || !session.isPrinting())
        return;
    if (session.request({{"Title", "PrintFileInfo"}})["ModelName"].toString() == name)
        throw Failure{Exit::Refused,
                      QStringLiteral("\"%1\" is being printed; a new file of that name would spoil the "
                                     "print. Choose another name with --name.")
                          .arg(name)};
}

UploadResult transfer(Session &session, QFile &file, const QString &name)
{
    const int blockSize = session.arguments().integer("block", 64, 1, 4096) * 1024;
    Upload upload(session.link(), blockSize, attemptsPerBlock);
    const qint64 size = file.size();
    const bool known = !queueRow(session, name).isEmpty();
    upload.announce(name, quint64(size));
    if (known) // its file is empty now; and only so does a row after the end prove that the new one was taken
        session.request(
            {{"Title", "SQL"},
             {"Action", QStringLiteral("delete from PrintQueue where ModelName=%1").arg(quoted(name))}});
    LiveLine line;
    const bool quiet = session.json();
    const UploadResult result = upload.send(file, [&](qint64 done, double speed) {
        const double fraction = size ? double(done) / double(size) : 1;
        if (!quiet)
            line.show(QStringLiteral("  %1 %2 %  %3  %4/s")
                          .arg(LiveLine::bar(fraction))
                          .arg(int(100 * fraction), 3)
                          .arg(format::bytes(double(done)), format::bytes(speed)),
                      int(10 * fraction));
    });
    upload.finish();
    return result;
}

QJsonObject uploadOne(Session &session, const QString &path, const QString &name)
{
    checkName(name);
    QFile file(path);
    if (!QFileInfo(path).isFile())
        throw Failure{Exit::Usage, QStringLiteral("There is no file %1.").arg(path)};
    if (!file.open(QIODevice::ReadOnly))
        throw Failure{Exit::Usage, QStringLiteral("%1 can't be read: %2").arg(path, file.errorString())};
    refuseRunningModel(session, name);
    if (!session.json())
        terminal::say(QStringLiteral("%1, %2").arg(name, format::bytes(double(file.size()))));
    const UploadResult result = transfer(session, file, name);
    const QJsonArray row = queueRow(session, name);
    if (row.isEmpty())
        throw Failure{
            Exit::Refused,
            QStringLiteral("%1 arrived in full, but the machine did not put it into the queue. Is its disk "
                           "full, or was another client uploading at the same time?")
                .arg(name)};
    const int layers = row[0].toObject()["SumLayer"].toString().toInt();
    if (!session.json())
        terminal::say(
            QStringLiteral("  in the queue, first in line%1%2")
                .arg(layers ? QStringLiteral(", %1 layers").arg(layers)
                            : QStringLiteral("; but the machine can't read its settings: is it a model?"),
                     result.resent ? QStringLiteral(" (%1 blocks sent again)").arg(result.resent)
                                   : QString()));
    return {{"name", name},
            {"bytes", double(result.bytes)},
            {"seconds", result.seconds},
            {"resent", result.resent},
            {"layers", layers},
            {"queued", true}};
}

void upload(Session &session)
{
    const QString name = session.arguments().value("name");
    if (!name.isEmpty() && session.words().size() > 1)
        throw Failure{Exit::Usage, QStringLiteral("--name is for one file.")};
    QJsonArray done;
    for (const QString &path : session.words())
        done << uploadOne(session, path, name.isEmpty() ? QFileInfo(path).fileName() : name);
    if (session.json())
        terminal::printJson(done);
}
} // namespace

QVector<Command> uploadCommands()
{
    const Option name{"name", "NAME", "What the machine shall call it; else the file's own name."};
    const Option block{"block", "KIB", "Size of a block in KiB; 64 if not given."};
    Command upload{
        "upload",
        "FILE...",
        "Sends models and says whether they reached the queue.",
        "A block that arrives damaged is sent again. A model of the same name is replaced. The last one "
        "sent\n"
        "stands first in the queue; nothing is printed before somebody presses Start at the machine.",
        {"upload ring.tzl", "upload *.tzl", "upload ring.tzl --name \"ring 2.tzl\""},
        {name, block, forceOption},
        1,
        -1,
        ::upload};
    upload.takesFiles = true;
    upload.timeoutS = 30;
    return {upload};
}
