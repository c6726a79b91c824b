// peloractl: one command, one exit code.

#include "commands/Command.h"
#include "commands/Help.h"
#include "commands/Session.h"
#include "link/Failure.h"
#include "output/Terminal.h"

#include <QCoreApplication>
#include <clocale>

namespace
{
void run(const QStringList &line)
{
    const QString name = Arguments::firstWord(line, commonOptions());
    const Command *command = findCommand(name);
    if (!name.isEmpty() && !command)
        throw Failure{
            Exit::Usage,
            QStringLiteral("There is no command \"%1\"; \"peloractl --help\" lists them.").arg(name)};
    const Arguments arguments(line, command ? commonOptions() + command->options : commonOptions());
    if (arguments.has("version"))
        return terminal::say(QStringLiteral("peloractl " PELORA_VERSION));
    if (arguments.has("help"))
        return terminal::say((command ? commandHelp(*command) : programHelp()).trimmed());
    if (!command)
        throw Failure{Exit::Usage, programHelp().trimmed()};
    Session session(*command, arguments);
    command->run(session);
}
} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    try {
        run(app.arguments().mid(1));
        return int(Exit::Ok);
    } catch (const Failure &failure) {
        terminal::complain(failure.text);
        return int(failure.code);
    }
}
