// Works the simulated machine from a shell: one command, one answer.

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalSocket>
#include <cstdio>

namespace
{
constexpr int connectLimitMs = 5000;
constexpr int answerLimitMs = 120000; // writing the report of a large part

int complain(const QString &text)
{
    std::fprintf(stderr, "%s\n", qPrintable(text));
    return 1;
}

QString controlSocket(const QString &option, const QString &value)
{
    if (option == "--control")
        return value;
    QFile settings(value + "/config/Platform.json");
    if (option != "--install" || !settings.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(settings.readAll())["MachineControl"].toString();
}

void printHelp(const QJsonArray &commands)
{
    for (bool fault : {false, true}) {
        std::printf(fault ? "\nFaults:\n" : "Commands:\n");
        for (const QJsonValue &value : commands) {
            const QJsonObject command = value.toObject();
            if (command["fault"].toBool() == fault)
                std::printf("  %s %s\n      %s\n", qPrintable(command["name"].toString()),
                            qPrintable(command["arguments"].toString()),
                            qPrintable(command["help"].toString()));
        }
    }
}

int ask(const QString &path, const QStringList &words)
{
    QLocalSocket socket;
    socket.connectToServer(path);
    if (!socket.waitForConnected(connectLimitMs))
        return complain("no machine at '" + path + "': " + socket.errorString());
    const QJsonObject request{{"cmd", QJsonArray::fromStringList(words)}};
    socket.write(QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n');
    while (!socket.canReadLine()) {
        if (!socket.waitForReadyRead(answerLimitMs))
            return complain("no answer: " + socket.errorString());
    }
    QJsonObject answer = QJsonDocument::fromJson(socket.readLine()).object();
    if (!answer["ok"].toBool())
        return complain(answer["error"].toString());
    answer.remove("ok");
    if (answer.contains("commands"))
        printHelp(answer["commands"].toArray());
    else if (!answer.isEmpty())
        std::printf("%s", QJsonDocument(answer).toJson().constData());
    return 0;
}
} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    const QString path = controlSocket(arguments.value(1), arguments.value(2));
    if (arguments.size() < 4)
        return complain(
            "usage: machinectl --control SOCKET|--install DIR COMMAND [ARGUMENTS]; COMMAND help lists all");
    if (path.isEmpty())
        return complain("no machine is known for " + arguments[2]);
    return ask(path, arguments.mid(3));
}
