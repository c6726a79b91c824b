// Set-points and measured temperatures.

#include "commands/Command.h"
#include "commands/Session.h"
#include "commands/TemperatureTable.h"
#include "link/Failure.h"
#include "output/Difference.h"
#include "output/Terminal.h"

namespace
{
void get(Session &session)
{
    QVector<int> profiles{0, 1, 2, measuredProfile};
    if (session.words().size() == 2)
        profiles = {profileNumber(session.word(1))};
    QStringList headers{"Zone", "Place"};
    QJsonObject all;
    QVector<QJsonObject> columns;
    for (int profile : profiles) {
        const QString name = QString::fromLatin1(profileNames()[profile]);
        columns << readTemperatures(session, profile);
        all[name] = columns.last();
        headers << name;
    }
    if (session.json())
        return terminal::printJson(all);
    QList<QStringList> rows;
    for (const Zone &zone : temperatureZones()) {
        QStringList row{zone.key, zone.place};
        bool used = !zone.place.isEmpty();
        for (const QJsonObject &column : columns) {
            row << QString::number(column[zone.key].toInt());
            used = used || column[zone.key].toInt() != 0;
        }
        if (used)
            rows << row;
    }
    terminal::printTable(headers, rows);
}

void set(Session &session)
{
    const int profile = profileNumber(session.word(1));
    if (profile >= settableProfiles)
        throw Failure{Exit::Usage, QStringLiteral("What is measured can't be set.")};
    QJsonObject wanted;
    for (const QString &word : session.words().mid(2))
        wanted[word.section(QLatin1Char('='), 0, 0)] =
            integerOf(word.section(QLatin1Char('='), 1), word.section(QLatin1Char('='), 0, 0), 0, 255);
    checkTemperatures(wanted, QStringLiteral("temps"));
    const QJsonObject before = readTemperatures(session, profile);
    QJsonObject after = before;
    for (const QString &key : wanted.keys())
        after[key] = wanted[key];
    const QVector<Change> changes = difference(before, after);
    if (changes.isEmpty())
        return session.report(QStringLiteral("Nothing differs."), {{"Changed", 0}});
    if (!session.json())
        printDifference(changes);
    session.confirm(QStringLiteral("Write this to the machine?"));
    writeTemperatures(session, profile, after);
    session.report(QStringLiteral("Written."), {{"Changed", changes.size()}});
}

void temps(Session &session)
{
    const QString action = session.words().value(0, QStringLiteral("get"));
    const int words = session.words().size();
    if (action == QLatin1String("get") && words <= 2)
        return get(session);
    if (action == QLatin1String("set") && words >= 3)
        return set(session);
    throw Failure{Exit::Usage,
                  QStringLiteral("Usage: peloractl temps get [PROFILE] | set PROFILE ZONE=DEGREES...")};
}
} // namespace

QVector<Command> temperatureCommands()
{
    Command command{
        "temps",
        "get [PROFILE] | set PROFILE ZONE=DEGREES...",
        "Shows and sets the heated zones.",
        "Profiles are start, printing, warm, and measured, which can only be read. A change of the profile\n"
        "in force heats or cools at once.",
        {"temps get", "temps get measured --json", "temps set warm head1.1=66 head1.2=66"},
        {yesOption},
        0,
        -1,
        temps};
    command.choices = "get set";
    command.further = "start printing warm measured";
    return {command};
}
