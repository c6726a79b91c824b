#include "commands/Command.h"
#include "commands/Help.h"
#include "commands/Session.h"
#include "link/Failure.h"
#include "output/Terminal.h"

#include <algorithm>

const Option yesOption{"yes", nullptr, "Don't ask before writing (also -y)."};
const Option forceOption{"force", nullptr, "Also while the machine prints."};

namespace
{
void completion(Session &session)
{
    if (session.word(0) != QLatin1String("bash"))
        throw Failure{Exit::Usage, QStringLiteral("Completion is made for bash.")};
    terminal::say(bashCompletion().trimmed());
}

Command completionCommand()
{
    Command command{"completion",
                    "bash",
                    "Prints a script that lets the shell complete commands.",
                    "",
                    {"completion bash > ~/.local/share/bash-completion/completions/peloractl"},
                    {},
                    1,
                    1,
                    completion};
    command.choices = "bash";
    return command;
}
} // namespace

const QVector<Option> &commonOptions()
{
    static const QVector<Option> options{
        {"host", "HOST", "The machine's name or address[:PORT]; PELORA_HOST if not given."},
        {"port", "PORT", "Its TCP port, 6666 unless it was changed."},
        {"timeout", "SECONDS", "How long to wait for each answer."},
        {"json", nullptr, "Prints JSON instead of texts and tables."},
        {"help", nullptr, "Shows the help of the program or of a command (also -h)."},
        {"version", nullptr, "Shows the version."},
    };
    return options;
}

const QVector<Command> &allCommands()
{
    static const QVector<Command> commands = machineCommands() + uploadCommands() + queueCommands() +
                                             databaseCommands() + parameterCommands() +
                                             temperatureCommands() + backupCommands() + benchCommands() +
                                             jetCommands() + QVector<Command>{completionCommand()};
    return commands;
}

const Command *findCommand(const QString &name)
{
    const auto at = std::find_if(allCommands().begin(), allCommands().end(),
                                 [&](const Command &command) { return name == QLatin1String(command.name); });
    return at == allCommands().end() ? nullptr : &*at;
}
