// The history of prints, and the database as such.

#include "commands/Command.h"
#include "commands/Session.h"
#include "link/Failure.h"
#include "output/Terminal.h"

#include <QDir>
#include <QFile>

namespace
{
constexpr int pageRows = 20; // with pictures, so that no answer grows large
const char historyColumns[] =
    "id,StartTime,EndTime,ModelName,PrintLayer,SumLayer,StrWax,SupWax,StrWaxSn,SupWaxSn,"
    "PrintMode,Volume,modelMaterialName";

/// Writes the picture of a row as it came; its file name, or nothing when the machine has none.
QString saveIcon(const QJsonObject &row, const QDir &folder)
{
    const QByteArray picture = QByteArray::fromBase64(row["Icon"].toString().toLatin1());
    if (picture.isEmpty())
        return {};
    const QString name = QStringLiteral("%1.jpg").arg(row["id"].toString().toInt(), 6, 10, QLatin1Char('0'));
    QFile file(folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(picture) != picture.size())
        throw Failure{Exit::Usage,
                      QStringLiteral("%1 can't be written: %2").arg(file.fileName(), file.errorString())};
    return name;
}

QJsonArray historyRows(Session &session, int limit, const QString &icons)
{
    const QString columns = QLatin1String(historyColumns);
    const QString query = QStringLiteral("select %1 from PrintHistory order by id desc limit %2 offset %3");
    if (icons.isEmpty())
        return session.rows(query.arg(columns + QStringLiteral(",'' as Icon")).arg(limit).arg(0));
    QDir folder(icons);
    if (!folder.mkpath(QStringLiteral(".")))
        throw Failure{Exit::Usage, QStringLiteral("The folder %1 can't be made.").arg(icons)};
    QJsonArray all;
    for (int offset = 0; offset < limit; offset += pageRows) {
        const int count = qMin(pageRows, limit - offset);
        const QJsonArray page =
            session.rows(query.arg(columns + QStringLiteral(",Icon")).arg(count).arg(offset));
        for (const QJsonValue &value : page) {
            QJsonObject row = value.toObject();
            row["Icon"] = saveIcon(row, folder);
            all << row;
        }
        if (page.size() < count)
            break;
    }
    return all;
}

void history(Session &session)
{
    const int everything = 1000000;
    const int limit =
        session.arguments().has("all") ? everything : session.arguments().integer("limit", 20, 1, everything);
    const QString icons = session.arguments().value("icons");
    QJsonArray rows = historyRows(session, limit, icons);
    QList<QStringList> table;
    for (QJsonValueRef value : rows) {
        QJsonObject row = value.toObject();
        if (icons.isEmpty())
            row.remove("Icon");
        value = row;
        table << QStringList{row["id"].toString(),
                             row["StartTime"].toString(),
                             row["EndTime"].toString(),
                             row["ModelName"].toString(),
                             row["PrintLayer"].toString() + '/' + row["SumLayer"].toString(),
                             format::grams(row["StrWax"]),
                             format::grams(row["SupWax"]),
                             row["Icon"].toString()};
    }
    if (session.json())
        return terminal::printJson(rows);
    if (table.isEmpty())
        terminal::say(QStringLiteral("Nothing was printed yet."));
    QStringList headers{"#", "Started", "Ended", "Model", "Layers", "Wax g", "Support g"};
    terminal::printTable(icons.isEmpty() ? headers : headers << QStringLiteral("Picture"), table);
}

QString trimmedStatement(QString statement)
{
    statement = statement.trimmed();
    while (statement.endsWith(QLatin1Char(';')))
        statement = statement.chopped(1).trimmed();
    return statement;
}

bool beginsWith(const QString &statement, const char *word)
{
    return statement.startsWith(QLatin1String(word), Qt::CaseInsensitive);
}

/// A query of the machine's answers nothing of errors; a count of its rows tells a wrong one from an empty
/// one.
void showQuery(Session &session, const QString &statement)
{
    const bool plain = session.arguments().has("icons") || !beginsWith(statement, "select");
    const QJsonArray found =
        session.rows(plain ? statement : QStringLiteral("select *,'' as Icon from (%1)").arg(statement));
    if (found.isEmpty() && !plain &&
        session.rows(QStringLiteral("select count(*) as n,'' as Icon from (%1)").arg(statement)).isEmpty())
        throw Failure{Exit::Refused,
                      QStringLiteral("The machine could not run this query; look for a slip in it.")};
    QJsonArray list;
    QList<QStringList> table;
    QStringList headers;
    for (const QJsonValue &value : found) {
        QJsonObject row = value.toObject();
        if (!plain || !session.arguments().has("icons"))
            row.remove("Icon");
        headers = row.keys();
        QStringList texts;
        for (const QString &key : headers)
            texts << row[key].toString();
        table << texts;
        list << row;
    }
    if (session.json())
        return terminal::printJson(list);
    terminal::printTable(headers, table);
    terminal::complain(QStringLiteral("%1 rows").arg(found.size()));
}

int changesSoFar(Session &session)
{
    return session.rows(QStringLiteral("select total_changes() as n,'' as Icon"))[0]
        .toObject()["n"]
        .toString()
        .toInt();
}

void sql(Session &session)
{
    const QString statement = trimmedStatement(session.word(0));
    if (session.arguments().has("count")) {
        const int count = session.request({{"Title", "FileListCnt"}, {"Action", statement}})["Count"].toInt();
        return session.report(QString::number(count), {{"Count", count}});
    }
    for (const char *word : {"select", "with", "pragma", "explain", "values"}) {
        if (beginsWith(statement, word))
            return showQuery(session, statement);
    }
    session.confirm(QStringLiteral("Run this on the machine's database?\n  %1\n").arg(statement));
    const int before = changesSoFar(session);
    session.request({{"Title", "SQL"}, {"Action", statement}});
    const int changed = changesSoFar(session) - before;
    session.report(
        changed ? QStringLiteral("%1 rows changed.").arg(changed)
                : QStringLiteral("No row changed. The machine does not tell whether the statement was good."),
        {{"Changed", changed}});
}
} // namespace

QVector<Command> databaseCommands()
{
    const Option icons{"icons", "DIR", "Saves the pictures of the prints there, as NUMBER.jpg."};
    const Option limit{"limit", "N", "How many, newest first; 20 if not given."};
    const Option all{"all", nullptr, "All of them."};
    const Option withIcons{"icons", nullptr,
                           "Runs a select untouched: the machine adds a picture to each row."};
    const Option count{"count", nullptr, "Only the number of rows."};
    Command historyCommand{"history",
                           "",
                           "The prints so far, newest first.",
                           "",
                           {"history", "history --limit 5 --icons pictures", "history --all --json"},
                           {limit, all, icons},
                           0,
                           0,
                           history};
    historyCommand.timeoutS = 30;
    Command sqlCommand{
        "sql",
        "STATEMENT",
        "Runs SQL on the machine's database.",
        "The tables are PrintQueue and PrintHistory. What is no query asks first, unless --yes.",
        {"sql \"select ModelName, SumLayer from PrintQueue\"",
         "sql \"select sum(StrWax) as g from PrintHistory\" --json",
         "sql \"delete from PrintHistory where id < 100\" --yes"},
        {withIcons, count, yesOption},
        1,
        1,
        sql};
    sqlCommand.timeoutS = 60;
    return {historyCommand, sqlCommand};
}
