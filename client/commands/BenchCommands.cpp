// The service bench: axes, wax, test prints and single board messages.

#include "commands/Command.h"
#include "commands/ParameterFile.h"
#include "commands/Session.h"
#include "link/Failure.h"
#include "output/Terminal.h"

#include <limits>

namespace
{
constexpr int farthest = std::numeric_limits<int>::max();
constexpr int patienceOfMovesS = 180; // a feeding or a test print answers when it is done

QJsonObject support(Session &session, const QString &axis = {}, int position = 0)
{
    QJsonObject request{{"Title", "Device"}, {"Device", "Support"}};
    if (!axis.isEmpty()) {
        request["Axis"] = axis;
        request["Pos"] = position;
    }
    return session.request(request);
}

void showPositions(Session &session, QJsonObject answer)
{
    answer.remove("Title");
    answer.remove("Device");
    if (session.json())
        return terminal::printJson(answer);
    QList<QStringList> rows;
    for (const char *key : {"X", "Y", "Z", "Hib", "LevelSpeed"})
        rows << QStringList{key == QByteArray("Hib")          ? "encoder"
                            : key == QByteArray("LevelSpeed") ? "leveller"
                                                              : key,
                            QString::number(answer[key].toDouble(), 'f', 0)};
    terminal::printTable({"Axis", "Position"}, rows);
}

void axis(Session &session)
{
    if (session.words().isEmpty())
        return showPositions(session, support(session));
    const QString name = session.word(0).toUpper();
    if (session.words().size() != 2 || !QStringList{"X", "Y", "Z"}.contains(name))
        throw Failure{Exit::Usage, QStringLiteral("Usage: peloractl axis [x|y|z POSITION|home]")};
    const bool home = session.word(1) == QLatin1String("home");
    const int position =
        home ? 0 : integerOf(session.word(1), QStringLiteral("The position"), -farthest, farthest);
    if (!home && position == 0)
        throw Failure{Exit::Usage, QStringLiteral("0 stands for homing in this protocol: say home.")};
    session.refuseWhilePrinting(QStringLiteral("moving an axis"));
    support(session, name, position); // answers with the positions before the move
    session.report(QStringLiteral("%1 is told to %2. \"peloractl axis\" shows where it is.")
                       .arg(name, home ? QStringLiteral("home") : QStringLiteral("move")),
                   {{"Axis", name}, {"Pos", position}});
}

QString waxOf(const QString &word)
{
    if (word == QLatin1String("structure"))
        return QStringLiteral("Struct");
    if (word == QLatin1String("support"))
        return QStringLiteral("Support");
    throw Failure{Exit::Usage, QStringLiteral("The wax is structure or support, not \"%1\".").arg(word)};
}

void feed(Session &session)
{
    const QString from = session.word(0);
    if (from != QLatin1String("valve") && from != QLatin1String("nozzle"))
        throw Failure{Exit::Usage,
                      QStringLiteral("Usage: peloractl feed valve|nozzle structure|support NUMBER")};
    const bool valve = from == QLatin1String("valve");
    const QJsonObject request{{"Title", "Device"},
                              {"Device", valve ? "Valve" : "Nozzle"},
                              {"Color", waxOf(session.word(1))},
                              {"Num", integerOf(session.word(2), QStringLiteral("The number"), 0, 255)}};
    session.refuseWhilePrinting(QStringLiteral("feeding wax"));
    const QJsonObject answer = session.request(request);
    if (valve && answer["Result"].toBool()) // true tells of a feeding that was given up
        throw Failure{Exit::Refused, QStringLiteral("The machine did not feed. Look for its messages.")};
    session.report(QStringLiteral("The board has the order; \"peloractl materials\" shows the levels."),
                   request);
}

/// The values of the machine's own set-up where the command line names none.
QJsonObject printRequest(Session &session)
{
    const Arguments &arguments = session.arguments();
    const QJsonObject sys = readParameters(session, parameterFile("sys"));
    QJsonObject request{{"Title", "Device"}, {"Device", "Print"}};
    const auto take = [&](const QString &key, const char *option, const QString &own) {
        request[key] = arguments.number(option, sys[own].toDouble(), -1e9, 1e9);
    };
    take("StartPos", "start", "ForwardStartPos");
    for (int i = 1; i <= 3; ++i) {
        const QByteArray offset = "offset" + QByteArray::number(i),
                         voltage = "voltage" + QByteArray::number(i);
        take(QStringLiteral("YOffset%1").arg(i), offset, QStringLiteral("ForwardYOffset%1").arg(i));
        take(QStringLiteral("Waveform%1").arg(i), voltage, QStringLiteral("WaveFormVoltage%1").arg(i));
    }
    return request;
}

void testPrint(Session &session)
{
    const QString graph = session.word(0);
    const Arguments &arguments = session.arguments();
    const QMap<QString, QString> graphs{{"dot", "Dot"}, {"line", "Line"}, {"image", "Image"}};
    if (!graphs.contains(graph))
        throw Failure{Exit::Usage,
                      QStringLiteral("A test print is dot, line or image, not \"%1\".").arg(graph)};
    const bool support =
        waxOf(arguments.value("wax", QStringLiteral("structure"))) == QLatin1String("Support");
    const int space = arguments.integer("space", 10, 1, 10000);
    const int layer = arguments.integer("layer", 1, 0, farthest);
    session.refuseWhilePrinting(QStringLiteral("a test print"));
    QJsonObject request = printRequest(session);
    request["Graph"] = graphs[graph];
    request["Color"] = support ? "Sup" : "Str";
    request["DotSpace"] = space;
    request["Layer"] = layer;
    session.request(request);
    session.report(QStringLiteral("The test print is done, as far as the machine tells."), request);
}

void can(Session &session)
{
    QByteArray message;
    for (const QString &word : session.words()) {
        bool good = false;
        const uint byte = word.toUInt(&good, 16);
        if (!good || byte > 0xFF)
            throw Failure{Exit::Usage, QStringLiteral("\"%1\" is no byte in hexadecimal.").arg(word)};
        message += char(byte);
    }
    constexpr int messageSize = 9; // board and eight bytes
    message = message.leftJustified(messageSize, '\0');
    session.refuseWhilePrinting(QStringLiteral("a message to a board"));
    const QByteArray answer = session.link().binary(0xAA, 1, message);
    if (answer.count('\0') == answer.size())
        throw Failure{Exit::Refused,
                      QStringLiteral("Board %1 did not answer.").arg(uint(quint8(message[0])))};
    const QString text = QString::fromLatin1(answer.toHex(' '));
    session.report(text, {{"Answer", text}});
}
} // namespace

QVector<Command> benchCommands()
{
    const Option wax{"wax", "WAX", "structure or support; structure if not given."};
    QVector<Command> commands{
        {"axis",
         "[x|y|z POSITION|home]",
         "Shows where the axes are, moves or homes one.",
         "Positions are in the boards' units. The answer comes at once, while the axis still moves.",
         {"axis", "axis x 120000", "axis z 40000", "axis y home"},
         {forceOption},
         0,
         2,
         axis},
        {"feed",
         "valve|nozzle structure|support NUMBER",
         "Feeds wax by hand.",
         "valve draws from the bottles, nozzle fills the heads; NUMBER is the machine's number of the valve "
         "or nozzle.",
         {"feed valve structure 1", "feed nozzle support 2"},
         {forceOption},
         3,
         3,
         feed},
        {"testprint",
         "dot|line|image",
         "Prints a test graph.",
         "What is not given is taken from the machine's sys parameters, as for a forward sweep.",
         {"testprint dot --space 20", "testprint line --wax support", "testprint image --layer 10"},
         {wax,
          {"space", "N", "Spacing of the dots; 10 if not given."},
          {"layer", "N", "Which layer of the loaded model; 1 if not given."},
          {"start", "POSITION", "Where the sweep starts."},
          {"offset1", "N", "Offset of head 1; likewise --offset2 and --offset3."},
          {"offset2", "N", "Of head 2."},
          {"offset3", "N", "Of head 3."},
          {"voltage1", "V", "Voltage of head 1; likewise --voltage2 and --voltage3."},
          {"voltage2", "V", "Of head 2."},
          {"voltage3", "V", "Of head 3."},
          forceOption},
         1,
         1,
         testPrint},
        {"can",
         "BOARD BYTE...",
         "Sends one message to a machine board.",
         "All in hexadecimal; eight bytes at most, the rest is zero. The answer is the board and its eight "
         "bytes.",
         {"can 2 84", "can 5 34 00 00 00 00 00 00 00"},
         {forceOption},
         2,
         9,
         can},
    };
    commands[0].choices = "x y z";
    commands[0].further = "home";
    commands[1].choices = "valve nozzle";
    commands[1].further = "structure support";
    commands[2].choices = "dot line image";
    for (Command &command : commands)
        command.timeoutS = patienceOfMovesS;
    return commands;
}
