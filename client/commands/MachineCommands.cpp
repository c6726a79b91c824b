// Finding the machine and seeing how it is.

#include "commands/Command.h"
#include "commands/ParameterFile.h"
#include "commands/Session.h"
#include "link/Discovery.h"
#include "link/Failure.h"
#include "output/Terminal.h"

#include <QElapsedTimer>
#include <QFile>
#include <QThread>

namespace
{
void discover(Session &session)
{
    const QString address = session.namedHost().section(QLatin1Char(':'), 0, 0);
    const QList<FoundMachine> machines = discoverMachines(session.timeoutMs(), address);
    QJsonArray list;
    QList<QStringList> rows;
    for (const FoundMachine &machine : machines) {
        QJsonObject object = machine.answer;
        object.remove("Title");
        object["Address"] = machine.address;
        list << object;
        QStringList row{machine.address, QString::number(object["Port"].toInt())};
        for (const char *key : {"Type", "Name", "Material", "Precision", "Volume", "Style"})
            row << object[key].toString();
        rows << row;
    }
    if (session.json())
        terminal::printJson(list);
    else
        terminal::printTable({"Address", "Port", "Type", "Name", "Material", "Precision", "Volume", "Style"},
                             rows);
    if (machines.isEmpty())
        throw Failure{
            Exit::NoConnection,
            QStringLiteral("No machine answered. Is it in this network? Multicast does not pass most "
                           "routers: name its address with --host.")};
}

QString stateName(int profile)
{
    const char *const names[] = {"starting", "printing", "idle, kept warm"};
    return profile >= 0 && profile < 3 ? QString::fromLatin1(names[profile]) : QString::number(profile);
}

QString loadedModel(Session &session)
{
    return session.request({{"Title", "PrintFileInfo"}})["ModelName"].toString();
}

void showStatus(const QJsonObject &status, const QString &model)
{
    const int layers = status["SumLayer"].toInt();
    QList<QStringList> rows{{"State", stateName(status["Status"].toInt())}};
    if (!model.isEmpty())
        rows << QStringList{"Model", model};
    if (layers > 0)
        rows << QStringList{"Layer", QStringLiteral("%1 of %2 (%3 %)")
                                         .arg(status["PrintLayer"].toInt())
                                         .arg(layers)
                                         .arg(status["Percent"].toDouble(), 0, 'f', 1)}
             << QStringList{"Started", status["StartTime"].toString()};
    if (status["Status"].toInt() == 1)
        rows << QStringList{"Left", format::duration(qint64(status["RemainingSecs"].toDouble()))}
             << QStringList{"Ends", status["EndTime"].toString()};
    if (!status["UUID"].toString().isEmpty())
        rows << QStringList{"Identity", status["UUID"].toString()};
    rows << QStringList{"Program", status["FirmwareVer"].toString()};
    for (const QStringList &row : rows)
        terminal::say(row[0].leftJustified(10) + row[1]);
}

QString watchLine(const QJsonObject &status)
{
    const QString state = stateName(status["Status"].toInt());
    const int layers = status["SumLayer"].toInt();
    if (layers <= 0)
        return state;
    const double percent = status["Percent"].toDouble();
    QString line = QStringLiteral("%1  %2 %3 %  layer %4/%5")
                       .arg(state, LiveLine::bar(percent / 100, 20))
                       .arg(percent, 5, 'f', 1)
                       .arg(status["PrintLayer"].toInt())
                       .arg(layers);
    if (status["Status"].toInt() == 1)
        line += QStringLiteral("  %1 left, ends %2")
                    .arg(format::duration(qint64(status["RemainingSecs"].toDouble())),
                         status["EndTime"].toString().section(' ', 1));
    return line;
}

/// Until Ctrl-C, or until a print that was seen has ended.
void watch(Session &session)
{
    const int intervalMs = int(1000 * session.arguments().number("interval", 1, 0.1, 3600));
    const bool untilIdle = session.arguments().has("until-idle");
    bool printing = false;
    LiveLine line;
    for (;;) {
        QElapsedTimer clock;
        clock.start();
        const QJsonObject status = session.status();
        if (session.json())
            terminal::printJsonLine(status);
        else
            line.show(watchLine(status), status["Status"].toInt() * 1000 + int(status["Percent"].toDouble()));
        const bool now = status["Status"].toInt() == 1;
        if (untilIdle && printing && !now)
            return;
        printing = printing || now;
        QThread::msleep(ulong(qMax<qint64>(0, intervalMs - clock.elapsed())));
    }
}

void status(Session &session)
{
    if (session.arguments().has("watch") || session.arguments().has("until-idle"))
        return watch(session);
    QJsonObject status = session.status();
    const QString model = loadedModel(session);
    if (!session.json())
        return showStatus(status, model);
    status.remove("Title");
    status["Model"] = model;
    terminal::printJson(status);
}

void ping(Session &session)
{
    QElapsedTimer clock;
    session.link().request({{"Title", "HeartBeat"}, {"Action", "Reply"}}); // connects as well
    clock.start();
    const QJsonObject answer = session.request({{"Title", "HeartBeat"}, {"Action", "Reply"}});
    const double ms = double(clock.nsecsElapsed()) / 1e6;
    const QString version = answer["ProVer"].toString();
    session.report(QStringLiteral("%1 answers in %2 ms, protocol %3")
                       .arg(session.link().place())
                       .arg(ms, 0, 'f', 2)
                       .arg(version),
                   {{"ms", ms}, {"ProVer", version}});
}

QString bottleState(const QJsonObject &bottle)
{
    const int status = bottle["Status"].toInt();
    return status == 1   ? QStringLiteral("in use")
           : status == 2 ? QStringLiteral("empty place")
                         : QStringLiteral("ready");
}

void showMaterials(const QJsonArray &bottles, const QJsonObject &levels)
{
    QList<QStringList> rows;
    for (int i = 0; i < bottles.size(); ++i) {
        const QJsonObject bottle = bottles[i].toObject();
        const bool structure = bottle["Type"].toInt() == 1;
        rows << QStringList{QString::number(i + 1),
                            structure ? QStringLiteral("structure") : QStringLiteral("support"),
                            bottle["Name"].toString(),
                            QString::number(bottle["Rest"].toInt()),
                            QString::number(bottle["Weight"].toInt()),
                            bottle["Sn"].toString(),
                            bottleState(bottle)};
    }
    terminal::printTable({"Bottle", "Wax", "Name", "Rest g", "Full g", "Serial", "State"}, rows);
    rows.clear();
    for (const QString &key : levels.keys())
        rows << QStringList{key, levels[key].toVariant().toString()};
    terminal::say({});
    terminal::printTable({"Head tank", "Level"}, rows);
}

void materials(Session &session)
{
    const QJsonArray bottles =
        session.request({{"Title", "MaterialBox"}, {"Action", "Get"}})["Content"].toArray();
    const QJsonObject ink = session.request({{"Title", "Ink.json"}, {"Action", "Read"}});
    const QJsonObject levels = ink["NozzleCurrentValue"].toObject();
    if (session.json())
        terminal::printJson(QJsonObject{{"Bottles", bottles}, {"Levels", levels}});
    else
        showMaterials(bottles, levels);
}

void raw(Session &session)
{
    QByteArray text = session.word(0).toUtf8();
    QFile input;
    if (text == "-" && input.open(stdin, QIODevice::ReadOnly))
        text = input.readAll();
    terminal::printJson(session.request(parsedObject(text, QStringLiteral("The request"))));
}
} // namespace

QVector<Command> machineCommands()
{
    const Option watchOption{"watch", nullptr,
                             "Goes on until Ctrl-C: a live line on a terminal, else a line a change."};
    const Option interval{"interval", "SECONDS", "Between two looks of --watch; 1 if not given."};
    const Option untilIdle{"until-idle", nullptr, "Watches until a print has ended."};
    Command find{
        "discover",
        "",
        "Finds the machines of this network.",
        "Asks by multicast, this computer and the --host, if one is named. --timeout is how long it listens.",
        {"discover", "discover --host 192.168.1.20 --json"},
        {},
        0,
        0,
        discover};
    find.timeoutS = 2;
    Command request{
        "raw",
        "JSON|-",
        "Sends a request as it is and prints the answer.",
        "For what no other command does. A request that the machine does not answer ends in a time-out.",
        {R"(raw '{"Title":"HeartBeat","Action":"Reply"}')"},
        {},
        1,
        1,
        raw};
    return {find,
            {"status",
             "[--watch]",
             "How the machine is and how far its print has come.",
             "",
             {"status", "status --watch", "status --json", "status --until-idle && echo done"},
             {watchOption, interval, untilIdle},
             0,
             0,
             status},
            {"ping",
             "",
             "Whether the machine answers, and how fast.",
             "",
             {"ping --host 192.168.1.20"},
             {},
             0,
             0,
             ping},
            {"materials",
             "",
             "Wax bottles and the levels in the heads.",
             "",
             {"materials", "materials --json"},
             {},
             0,
             0,
             materials},
            request};
}
