// Firing jets, weighing drops, and the waveform that drives them.

#include "commands/Command.h"
#include "commands/ParameterFile.h"
#include "commands/Session.h"
#include "link/Failure.h"
#include "output/Difference.h"
#include "output/Terminal.h"

#include <QFile>

namespace
{
constexpr int chains = 3;
constexpr int lastRow = 880;
constexpr int fastestHz = 100000;

int chainOf(Session &session)
{
    return session.arguments().integer("chain", 1, 1, chains);
}

void jets(Session &session)
{
    const QString action = session.word(0);
    const bool start = action == QLatin1String("start");
    if (!start && action != QLatin1String("stop"))
        throw Failure{Exit::Usage, QStringLiteral("Usage: peloractl jets start|stop")};
    const Arguments &arguments = session.arguments();
    const QString pattern = arguments.value("jets");
    const QJsonObject request{{"Title", "Inject"},
                              {"nHibChainNum", chainOf(session)},
                              {"Row", arguments.integer("row", 0, 0, lastRow - 1)},
                              {"Hz", start ? arguments.integer("hz", 1000, 1, fastestHz) : 0},
                              {"Jets", pattern}};
    if (start && (pattern.isEmpty() || pattern.count('0') + pattern.count('1') != pattern.size()))
        throw Failure{Exit::Usage, QStringLiteral("--jets is a text of 0 and 1, a jet each.")};
    session.refuseWhilePrinting(QStringLiteral("firing jets"));
    session.request(request);
    session.report(start ? QStringLiteral("The jets fire until \"peloractl jets stop\".")
                         : QStringLiteral("The jets are still."),
                   {{"Firing", start}});
}

QJsonObject dropRequest(Session &session, const QString &action)
{
    const QMap<QString, QString> nozzles{{"all", "All"},
                                         {"support", "Support"},
                                         {"structure", "Struct"},
                                         {"stop", "Stop"},
                                         {"voltage", "Waveform"}};
    if (!nozzles.contains(action))
        throw Failure{Exit::Usage,
                      QStringLiteral("Usage: peloractl drops all|structure|support|stop|voltage V1 V2 V3")};
    const Arguments &arguments = session.arguments();
    QJsonObject request{{"Title", "Device"},
                        {"Device", "DropMass"},
                        {"Nozzle", nozzles[action]},
                        {"Hz", arguments.integer("hz", 1000, 1, fastestHz)},
                        {"Cnt", arguments.integer("count", 1000, 0, 1000000000)},
                        {"Row", arguments.integer("row", 0, 0, lastRow - 1)},
                        {"Head", arguments.integer("head", 0, 0, chains)}};
    const bool voltage = action == QLatin1String("voltage");
    if (session.words().size() != (voltage ? 1 + chains : 1))
        throw Failure{Exit::Usage, QStringLiteral("voltage takes three values, the others none.")};
    for (int i = 1; voltage && i <= chains; ++i)
        request[QStringLiteral("Waveform%1").arg(i)] =
            numberOf(session.word(i), QStringLiteral("Voltage %1").arg(i), 0, 200);
    return request;
}

void drops(Session &session)
{
    const QJsonObject request = dropRequest(session, session.word(0));
    session.refuseWhilePrinting(QStringLiteral("firing drops"));
    session.request(request);
    session.report(QStringLiteral("The machine has the order; it does not tell of its end."), request);
}

void norm(Session &session)
{
    const Arguments &arguments = session.arguments();
    const QJsonObject request{
        {"Title", "Device"},
        {"Device", "DropVelocity"},
        {"HibChainNum", chainOf(session)},
        {"SupOffset", integerOf(session.word(0), QStringLiteral("The support offset"), -127, 127)},
        {"StrOffset", integerOf(session.word(1), QStringLiteral("The structure offset"), -127, 127)},
        {"normFactory", arguments.has("factory")}};
    session.refuseWhilePrinting(QStringLiteral("changing norm values"));
    session.confirm(QStringLiteral("Rewrite the norm values of head %1?").arg(chainOf(session)));
    const int status = session.request(request)["Status"].toInt();
    session.report(QStringLiteral("The machine's tool ended with %1.").arg(status), {{"Status", status}});
}

QJsonObject waveformRequest(Session &session, const char *action)
{
    return {{"Title", "WaveForm"}, {"Action", action}, {"nHibChainNum", chainOf(session)}};
}

QJsonArray readKnots(Session &session)
{
    const QJsonObject answer = session.request(waveformRequest(session, "Get"));
    const QJsonArray knots = answer["WaveKnots"].toArray();
    if (knots.isEmpty())
        throw Failure{Exit::Refused,
                      QStringLiteral("Head %1 has no waveform: it tells of %2 knots. Is it connected?")
                          .arg(chainOf(session))
                          .arg(answer["WaveKnotCount"].toInt())};
    return knots;
}

void showKnots(Session &session, const QJsonArray &knots)
{
    if (session.json())
        return terminal::printJson(QJsonObject{{"WaveKnots", knots}});
    const QStringList keys{"timeUs", "voltageV", "drive", "connect", "scalable", "reference", "normRegion"};
    QList<QStringList> rows;
    for (int i = 0; i < knots.size(); ++i) {
        QStringList row{QString::number(i)};
        for (const QString &key : keys)
            row << knots[i].toObject()[key].toVariant().toString();
        rows << row;
    }
    terminal::printTable(QStringList{"#"} + keys, rows);
}

/// "3.voltageV=88" on the knots as they are; "drive" and "connect" are the head's own.
QJsonArray withKnotValue(QJsonArray knots, const QString &word)
{
    const QString place = word.section('=', 0, 0), key = place.section('.', 1);
    const int knot = integerOf(place.section('.', 0, 0), QStringLiteral("The knot"), 0, knots.size() - 1);
    const QString text = word.section('=', 1);
    QJsonObject changed = knots[knot].toObject();
    if (key == QLatin1String("timeUs") || key == QLatin1String("voltageV"))
        changed[key] = numberOf(text, key, -1e6, 1e6);
    else if (key == QLatin1String("normRegion"))
        changed[key] = integerOf(text, key, -1000000, 1000000);
    else if ((key == QLatin1String("scalable") || key == QLatin1String("reference")) &&
             QStringList{"true", "false"}.contains(text))
        changed[key] = text == QLatin1String("true");
    else
        throw Failure{Exit::Usage,
                      QStringLiteral("\"%1\": a knot's timeUs, voltageV and normRegion are numbers, its "
                                     "scalable and reference true or false.")
                          .arg(word)};
    knots[knot] = changed;
    return knots;
}

QJsonArray knotsFromFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Failure{Exit::Usage, QStringLiteral("%1 can't be read: %2").arg(path, file.errorString())};
    return parsedObject(file.readAll(), path)["WaveKnots"].toArray();
}

void setWaveform(Session &session)
{
    const QJsonArray before = readKnots(session);
    const QString path = session.arguments().value("file");
    QJsonArray after = path.isEmpty() ? before : knotsFromFile(path);
    if (after.size() != before.size())
        throw Failure{Exit::Usage, QStringLiteral("%1 holds %2 knots, head %3 has %4.")
                                       .arg(path)
                                       .arg(after.size())
                                       .arg(chainOf(session))
                                       .arg(before.size())};
    for (const QString &word : session.words().mid(1))
        after = withKnotValue(after, word);
    const QVector<Change> changes = difference(before, after, QStringLiteral("knot"));
    if (changes.isEmpty())
        return session.report(QStringLiteral("Nothing differs."), {{"Changed", 0}});
    if (!session.json())
        printDifference(changes);
    session.refuseWhilePrinting(QStringLiteral("another waveform"));
    session.confirm(QStringLiteral("Write this to head %1?").arg(chainOf(session)));
    QJsonObject request = waveformRequest(session, "Set");
    request["WaveKnots"] = after;
    const int result = session.request(request)["SetWaveform"].toInt();
    if (readKnots(session) != after)
        throw Failure{
            Exit::Refused,
            QStringLiteral("The head holds another waveform than was sent (result %1).").arg(result)};
    session.report(QStringLiteral("Written and read back."),
                   {{"Changed", changes.size()}, {"SetWaveform", result}});
}

void waveform(Session &session)
{
    const QString action = session.words().value(0, QStringLiteral("get"));
    if (action == QLatin1String("get") && session.words().size() <= 1)
        return showKnots(session, readKnots(session));
    if (action == QLatin1String("set"))
        return setWaveform(session);
    throw Failure{Exit::Usage, QStringLiteral("Usage: peloractl waveform get | set KNOT.KEY=VALUE...")};
}
} // namespace

QVector<Command> jetCommands()
{
    const Option chain{"chain", "N", "The head, 1 to 3; 1 if not given."};
    const Option hz{"hz", "HZ", "How often a second; 1000 if not given."};
    const Option row{"row", "N", "The row to start with."};
    QVector<Command> commands{
        {"jets",
         "start|stop",
         "Fires single jets of a head.",
         "The text of --jets switches the jets row+1, row+17, row+33 and so on; others stay as they were.",
         {"jets start --chain 2 --row 0 --hz 500 --jets 0101", "jets stop --chain 2"},
         {chain, row, hz, {"jets", "0101...", "1 for on, 0 for off."}, forceOption},
         1,
         1,
         jets},
        {"drops",
         "all|structure|support|stop|voltage V1 V2 V3",
         "Fires a counted number of drops, for weighing.",
         "all with --row 0 fires all rows, else every sixteenth from that row on.",
         {"drops structure --head 1 --hz 2000 --count 100000", "drops stop", "drops voltage 22.5 22 23"},
         {hz,
          row,
          {"count", "N", "How many drops; 1000 if not given."},
          {"head", "N", "structure and support: 1 to 3, or 0 for all."},
          forceOption},
         1,
         4,
         drops},
        {"norm",
         "SUPPORT STRUCTURE",
         "Shifts the norm values of a head's jets by two offsets.",
         "",
         {"norm --chain 1 2 -1", "norm --chain 1 0 0 --factory"},
         {chain, {"factory", nullptr, "Starts from the values of the factory."}, yesOption, forceOption},
         2,
         2,
         norm},
        {"waveform",
         "get | set KNOT.KEY=VALUE...",
         "Shows and changes the waveform that drives a head.",
         "drive and connect of a knot are the head's own and can't be changed.",
         {"waveform get --chain 1", "waveform get --json > head1.json",
          "waveform set --chain 1 3.voltageV=21.5", "waveform set --file head1.json"},
         {chain,
          {"file", "FILE", "Takes all knots from a file that \"waveform get --json\" made."},
          yesOption,
          forceOption},
         0,
         -1,
         waveform},
    };
    commands[0].choices = "start stop";
    commands[1].choices = "all structure support stop voltage";
    commands[3].choices = "get set";
    return commands;
}
