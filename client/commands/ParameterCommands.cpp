// Looking at parameter files and changing them.

#include "commands/Command.h"
#include "commands/ParameterFile.h"
#include "commands/Session.h"
#include "link/Failure.h"
#include "output/Difference.h"
#include "output/Terminal.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryFile>

namespace
{
/// Shows what would change, asks, writes. Numbers that become texts and lost keys are slips more often than
/// wishes.
void change(Session &session, const ParameterFile &file, const QJsonObject &before, const QJsonObject &after)
{
    if (file.isReadOnly())
        throw Failure{
            Exit::Usage,
            QStringLiteral("%1 is the machine's own account; it can't be written.").arg(file.fileName())};
    const bool tryOut = session.arguments().has("try");
    if (tryOut && !file.hasIsSave)
        throw Failure{Exit::Usage,
                      QStringLiteral("--try is for ink and air, whose values go to the boards.")};
    const QVector<Change> changes = difference(before, after);
    if (changes.isEmpty())
        return session.report(QStringLiteral("Nothing differs."), {{"Changed", 0}});
    for (const Change &one : changes) {
        if (one.changesType() && !session.arguments().has("force"))
            throw Failure{Exit::Usage,
                          QStringLiteral("%1 would get a value of another kind. --force writes it all "
                                         "the same.")
                              .arg(one.path)};
    }
    if (!session.json())
        printDifference(changes);
    session.confirm(
        QLatin1String(tryOut ? "Send this to the boards, unsaved?" : "Write this to the machine?"));
    if (readParameters(session, file) != before)
        throw Failure{Exit::Refused,
                      QStringLiteral("%1 was changed by somebody else meanwhile; nothing was written.")
                          .arg(file.fileName())};
    writeParameters(session, file, after, !tryOut);
    session.report(tryOut ? QStringLiteral("The boards have it; the file keeps its values.")
                          : QStringLiteral("Written."),
                   {{"Changed", changes.size()}});
}

void list(Session &session)
{
    QJsonArray all;
    QList<QStringList> rows;
    for (const ParameterFile &file : parameterFiles()) {
        all << QJsonObject{{"Name", file.name}, {"File", file.fileName()}, {"ReadOnly", file.isReadOnly()}};
        rows << QStringList{file.name, file.fileName(), file.holds};
    }
    if (session.json())
        terminal::printJson(all);
    else
        terminal::printTable({"Name", "File", "Holds"}, rows);
}

/// The value that a path of keys leads to, written with "." or ",".
QJsonValue valueAt(const QJsonObject &document, const QStringList &path)
{
    QJsonValue value = document;
    for (const QString &key : path)
        value = value.toObject().value(key);
    return value;
}

QStringList pathOf(const QString &text)
{
    QString path = text;
    return path.replace(QLatin1Char(','), QLatin1Char('.')).split(QLatin1Char('.'));
}

QJsonObject withValue(QJsonObject object, const QStringList &path, const QJsonValue &value)
{
    object[path.first()] =
        path.size() == 1 ? value : withValue(object[path.first()].toObject(), path.mid(1), value);
    return object;
}

/// A JSON value if it reads as one, else the text itself.
QJsonValue valueOf(const QString &text)
{
    const QJsonDocument document = QJsonDocument::fromJson("[" + text.toUtf8() + "]");
    return document.array().size() == 1 ? document.array()[0] : QJsonValue(text);
}

QJsonObject assigned(Session &session, QJsonObject document, const QString &word)
{
    const QStringList path = pathOf(word.section(QLatin1Char('='), 0, 0));
    if (!word.contains(QLatin1Char('=')) || path.contains(QString()))
        throw Failure{Exit::Usage, QStringLiteral("\"%1\" is not KEY=VALUE.").arg(word)};
    const QJsonValue old = valueAt(document, path);
    if (old.isUndefined() && !session.arguments().has("add"))
        throw Failure{
            Exit::Usage,
            QStringLiteral("There is no key \"%1\" yet; --add makes it.").arg(path.join(QLatin1Char('.')))};
    const QString text = word.section(QLatin1Char('='), 1);
    return withValue(document, path, old.isString() ? QJsonValue(text) : valueOf(text));
}

void get(Session &session, const ParameterFile &file)
{
    const QJsonObject document = readParameters(session, file);
    if (session.words().size() == 2)
        return terminal::printJson(document); // the document is JSON and nothing else
    const QJsonValue value = valueAt(document, pathOf(session.word(2)));
    if (value.isUndefined())
        throw Failure{Exit::Refused, QStringLiteral("There is no key \"%1\".").arg(session.word(2))};
    if (value.isObject() || value.isArray() || session.json())
        terminal::printJson(
            value.isObject() || value.isArray() ? value : QJsonValue(QJsonObject{{session.word(2), value}}));
    else
        terminal::say(value.isBool() ? QLatin1String(value.toBool() ? "true" : "false")
                                     : value.toVariant().toString());
}

void set(Session &session, const ParameterFile &file)
{
    const QString path = session.arguments().value("file");
    const QJsonObject before = readParameters(session, file);
    QJsonObject after = before;
    if (!path.isEmpty()) {
        QFile input(path);
        if (path == QLatin1String("-") ? !input.open(stdin, QIODevice::ReadOnly)
                                       : !input.open(QIODevice::ReadOnly))
            throw Failure{Exit::Usage, QStringLiteral("%1 can't be read: %2").arg(path, input.errorString())};
        after = withoutMessageKeys(parsedObject(input.readAll(), path));
    } else if (session.words().size() < 3) {
        throw Failure{Exit::Usage, QStringLiteral("Say what to set: KEY=VALUE..., or --file FILE.")};
    }
    for (const QString &word : session.words().mid(2))
        after = assigned(session, after, word);
    change(session, file, before, after);
}

void edit(Session &session, const ParameterFile &file)
{
    const QString usual = qEnvironmentVariable("EDITOR", QStringLiteral("vi"));
    const QStringList editor = QProcess::splitCommand(qEnvironmentVariable("VISUAL", usual));
    const QJsonObject before = readParameters(session, file);
    QTemporaryFile copy(QStringLiteral("peloractl-XXXXXX.") + file.fileName());
    copy.setFileTemplate(QDir::tempPath() + QLatin1Char('/') + copy.fileTemplate());
    if (editor.isEmpty() || !copy.open() || copy.write(QJsonDocument(before).toJson()) < 0 || !copy.flush())
        throw Failure{Exit::Usage, QStringLiteral("No editor, or no room for the text to edit.")};
    QProcess process;
    process.setInputChannelMode(QProcess::ForwardedInputChannel);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(editor[0], editor.mid(1) << copy.fileName());
    if (!process.waitForFinished(-1) || process.exitCode() != 0)
        throw Failure{Exit::Usage,
                      QStringLiteral("The editor %1 failed; nothing was written.").arg(editor[0])};
    QFile edited(copy.fileName()); // anew: editors put a new file in the place of the old one
    copy.setAutoRemove(false);
    if (!edited.open(QIODevice::ReadOnly))
        throw Failure{Exit::Usage, QStringLiteral("The edited text is gone; nothing was written.")};
    const QJsonObject after = withoutMessageKeys(parsedObject(edited.readAll(), edited.fileName()));
    edited.remove();
    change(session, file, before, after);
}

void params(Session &session)
{
    const QString action = session.words().value(0, QStringLiteral("list"));
    if (action == QLatin1String("list"))
        return list(session);
    const int words = session.words().size();
    if (words >= 2 && action == QLatin1String("set"))
        return set(session, parameterFile(session.word(1)));
    if ((words == 2 || words == 3) && action == QLatin1String("get"))
        return get(session, parameterFile(session.word(1)));
    if (words == 2 && action == QLatin1String("edit"))
        return edit(session, parameterFile(session.word(1)));
    throw Failure{Exit::Usage,
                  QStringLiteral("Usage: peloractl params list|get|set|edit NAME [KEY[=VALUE]...]")};
}
} // namespace

QVector<Command> parameterCommands()
{
    Command command{"params",
                    "list|get|set|edit NAME [KEY[=VALUE]...]",
                    "Shows and changes the machine's parameter files.",
                    "A change is shown key by key and asked for before it is written. The machine takes it "
                    "at once, also in the\n"
                    "middle of a print. A key in a group is written with a point: Nozzle1Fan.norTemp.",
                    {"params list", "params get sys", "params get sys XMoveSpeed",
                     "params set sys XMoveSpeed=500 ZStartPos=2100", "params set ink SupFeedingTime=9 --try",
                     "params set settings --file Settings.json --yes",
                     "EDITOR=nano peloractl params edit air"},
                    {{"file", "FILE", "Takes the whole document from a file, or - for standard input."},
                     {"add", nullptr, "Allows keys that are not there yet."},
                     {"try", nullptr, "Ink and air: sends the values to the boards and saves nothing."},
                     {"force", nullptr, "Allows a value of another kind than before."},
                     yesOption},
                    0,
                    -1,
                    params};
    command.choices = "list get set edit";
    command.further = "name settings styles materials fan sys ink air use";
    return {command};
}
