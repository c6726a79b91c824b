// The queue of models. The machine answers "Success" to everything, so each change is looked up afterwards.

#include "commands/Command.h"
#include "commands/Session.h"
#include "link/Failure.h"
#include "output/Terminal.h"

namespace
{
const char *const statusNames[] = {"waiting", "done", "stopped"};
constexpr int waiting = 0;
constexpr int listed = 3;

QString statusName(const QJsonObject &row)
{
    const int status = row["status"].toString().toInt();
    return status >= 0 && status < listed ? QString::fromLatin1(statusNames[status])
                                          : QString::number(status);
}

QJsonArray listOf(Session &session, int status)
{
    return session.rows(
        QStringLiteral("select *,'' as Icon from PrintQueue where status=%1 order by ID").arg(status));
}

QStringList namesOf(const QJsonArray &list)
{
    QStringList names;
    for (const QJsonValue &row : list)
        names << row["ModelName"].toString();
    return names;
}

QStringList tableRow(int place, const QJsonObject &row)
{
    const QString done = row["PrintLayer"].toString();
    const QString layers = row["SumLayer"].toString();
    const bool waits = row["status"].toString() == QLatin1String("0");
    return {QString::number(place),
            row["ModelName"].toString(),
            statusName(row),
            done.isEmpty() || waits ? layers : QStringLiteral("%1/%2").arg(done, layers),
            format::duration(row["printTime"].toString().toLongLong()),
            format::grams(row["StrWax"]),
            format::grams(row["SupWax"]),
            row[waits ? "createtime" : "EndTime"].toString()};
}

void list(Session &session)
{
    const QString wanted = session.arguments().value("status", QStringLiteral("all"));
    QJsonArray all;
    QList<QStringList> table;
    for (int status = 0; status < listed; ++status) {
        if (wanted != QLatin1String("all") && wanted != QLatin1String(statusNames[status]))
            continue;
        int place = 0;
        for (const QJsonValue &value : listOf(session, status)) {
            QJsonObject row = value.toObject();
            table << tableRow(++place, row);
            row.remove("Icon");
            row["State"] = QString::fromLatin1(statusNames[status]);
            all << row;
        }
    }
    if (session.json())
        return terminal::printJson(all);
    if (table.isEmpty())
        terminal::say(QStringLiteral("The queue is empty."));
    terminal::printTable({"#", "Model", "State", "Layers", "Time", "Wax g", "Support g", "Added or ended"},
                         table);
}

/// The row of a model; ends the command when there is none.
QJsonObject rowOf(Session &session, const QString &name)
{
    const QJsonArray found =
        session.rows(QStringLiteral("select *,'' as Icon from PrintQueue where ModelName=%1 order by ID")
                         .arg(quoted(name)));
    if (found.isEmpty())
        throw Failure{
            Exit::Refused,
            QStringLiteral("There is no model \"%1\"; \"peloractl queue list\" shows them.").arg(name)};
    return found[0].toObject();
}

void tellPlace(Session &session, const QString &name, const QStringList &names)
{
    const int place = names.indexOf(name) + 1;
    session.report(QStringLiteral("%1 is number %2 of %3.").arg(name).arg(place).arg(names.size()),
                   {{"ModelName", name}, {"Place", place}, {"Of", names.size()}});
}

/// "top", "up" and "down" within the list that the model stands in.
void move(Session &session, const QString &name, const QString &how)
{
    const int status = rowOf(session, name)["status"].toString().toInt();
    const QStringList before = namesOf(listOf(session, status));
    const int at = before.indexOf(name);
    const bool top = how == QLatin1String("top");
    const bool up = how == QLatin1String("up");
    const int goal = top ? 0 : qBound(0, up ? at - 1 : at + 1, before.size() - 1);
    if (goal == at)
        return tellPlace(session, name, before);
    QJsonObject request{{"Title", "FileListSort"}, {"FileName", name}, {"Status", status}, {"IsTop", top}};
    if (!top)
        request["Direction"] = up;
    session.request(request);
    const QStringList after = namesOf(listOf(session, status));
    if (after.indexOf(name) != goal)
        throw Failure{Exit::Refused, QStringLiteral("The machine did not move \"%1\".").arg(name)};
    tellPlace(session, name, after);
}

void reprint(Session &session, const QString &name)
{
    if (rowOf(session, name)["status"].toString().toInt() != waiting)
        session.request({{"Title", "FileListReprint"}, {"FileName", name}});
    const QStringList names = namesOf(listOf(session, waiting));
    if (!names.contains(name))
        throw Failure{Exit::Refused,
                      QStringLiteral("The machine did not put \"%1\" back in line.").arg(name)};
    tellPlace(session, name, names);
}

void remove(Session &session, const QStringList &names)
{
    const QString loaded = session.isPrinting() && !session.arguments().has("force")
                               ? session.request({{"Title", "PrintFileInfo"}})["ModelName"].toString()
                               : QString();
    for (const QString &name : names) {
        rowOf(session, name);
        if (name == loaded)
            throw Failure{
                Exit::Refused,
                QStringLiteral("\"%1\" is being printed; its files are needed. --force deletes it all the "
                               "same.")
                    .arg(name)};
    }
    session.confirm(QStringLiteral("Delete %1 with all files?").arg(names.join(QStringLiteral(", "))));
    for (const QString &name : names) {
        session.request({{"Title", "FileDelete"}, {"File", name}});
        if (!session
                 .rows(QStringLiteral("select ModelName,'' as Icon from PrintQueue where ModelName=%1")
                           .arg(quoted(name)))
                 .isEmpty())
            throw Failure{Exit::Refused, QStringLiteral("The machine did not delete \"%1\".").arg(name)};
        if (!session.json())
            terminal::say(QStringLiteral("%1 is deleted.").arg(name));
    }
    if (session.json())
        terminal::printJson(QJsonObject{{"Deleted", QJsonArray::fromStringList(names)}});
}

void queue(Session &session)
{
    const QString action = session.words().value(0, QStringLiteral("list"));
    const QStringList names = session.words().mid(1);
    const bool one = names.size() == 1;
    if (action == QLatin1String("list") && names.isEmpty())
        return list(session);
    if (action == QLatin1String("delete") && !names.isEmpty())
        return remove(session, names);
    if (action == QLatin1String("reprint") && one)
        return reprint(session, names[0]);
    if (one && QStringList{"top", "up", "down"}.contains(action))
        return move(session, names[0], action);
    throw Failure{Exit::Usage,
                  QStringLiteral("Usage: peloractl queue list|top|up|down|delete|reprint [NAME]")};
}

void job(Session &session)
{
    QJsonObject model = session.request({{"Title", "PrintFileInfo"}});
    model.remove("Title");
    model.remove("Icon");
    if (session.json())
        return terminal::printJson(model);
    if (model.isEmpty())
        return terminal::say(QStringLiteral("No model is loaded."));
    for (const QString &key : model.keys())
        terminal::say(key.leftJustified(20) + model[key].toVariant().toString());
}
} // namespace

QVector<Command> queueCommands()
{
    const Option status{"status", "WHICH", "Only waiting, done or stopped models."};
    Command queueCommand{
        "queue",
        "list|top|up|down|delete|reprint [NAME...]",
        "Shows and orders the models of the machine.",
        "The first waiting model is printed next, once somebody presses Start at the machine.\n"
        "reprint puts a model that was printed or stopped back at the head of the line.",
        {"queue list", "queue list --status waiting --json", "queue top ring.tzl", "queue down ring.tzl",
         "queue reprint ring.tzl", "queue delete ring.tzl --yes"},
        {status, yesOption, forceOption},
        0,
        -1,
        queue};
    queueCommand.choices = "list top up down delete reprint";
    return {queueCommand, {"job", "", "The model that is loaded for printing.", "", {"job"}, {}, 0, 0, job}};
}
