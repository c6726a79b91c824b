#include "commands/Help.h"

#include "commands/Command.h"

namespace
{
QString optionLines(const QVector<Option> &options)
{
    QString lines;
    for (const Option &option : options) {
        QString name = QStringLiteral("--") + QLatin1String(option.name);
        if (option.value)
            name += QLatin1Char(' ') + QLatin1String(option.value);
        lines += QStringLiteral("  %1 %2\n").arg(name, -20).arg(QLatin1String(option.help));
    }
    return lines;
}

QString names(const QVector<Option> &options)
{
    QString text;
    for (const Option &option : options)
        text += QStringLiteral(" --") + QLatin1String(option.name);
    return text.mid(1);
}

QString completionCase(const Command &command)
{
    return QStringLiteral("        %1) first=\"%2\"; second=\"%3\"; options=\"%4\"; files=%5 ;;\n")
        .arg(QLatin1String(command.name), QLatin1String(command.choices), QLatin1String(command.further),
             names(command.options), QLatin1String(command.takesFiles ? "1" : ""));
}
} // namespace

QString programHelp()
{
    QString text = QStringLiteral("peloractl works a printer over the network.\n\n"
                                  "Usage: peloractl [--host HOST] COMMAND ...\n\nCommands:\n");
    for (const Command &command : allCommands())
        text += QStringLiteral("  %1 %2\n")
                    .arg(QLatin1String(command.name), -11)
                    .arg(QLatin1String(command.summary));
    text += QStringLiteral("\nOptions of every command:\n") + optionLines(commonOptions());
    return text +
           QStringLiteral("\nExamples:\n"
                          "  peloractl discover\n"
                          "  export PELORA_HOST=192.168.1.20\n"
                          "  peloractl status --watch\n"
                          "  peloractl upload ring.tzl\n"
                          "  peloractl params set sys XMoveSpeed=500\n\n"
                          "\"peloractl COMMAND --help\" tells more about a command.\n"
                          "Exit codes: 0 done, 1 the machine said no or it failed, 2 wrong usage,\n"
                          "3 no connection, 4 no answer in time.\n"
                          "The machine serves one client at a time, and the newest wins: a command cuts off\n"
                          "another that still runs, an upload for instance.\n");
}

QString commandHelp(const Command &command)
{
    QString text = QStringLiteral("Usage: peloractl %1 %2\n\n%3\n")
                       .arg(QLatin1String(command.name), QLatin1String(command.arguments),
                            QLatin1String(command.summary));
    if (*command.details)
        text += QLatin1Char('\n') + QString::fromUtf8(command.details) + QLatin1Char('\n');
    if (!command.options.isEmpty())
        text += QStringLiteral("\nOptions:\n") + optionLines(command.options);
    text += QStringLiteral("\nOptions of every command:\n") + optionLines(commonOptions());
    text += QStringLiteral("\nExamples:\n");
    for (const char *example : command.examples)
        text += QStringLiteral("  peloractl ") + QString::fromUtf8(example) + QLatin1Char('\n');
    return text;
}

QString bashCompletion()
{
    QString commands, cases;
    for (const Command &command : allCommands()) {
        commands += QLatin1String(command.name) + QLatin1Char(' ');
        cases += completionCase(command);
    }
    return QStringLiteral(R"(# source <(peloractl completion bash)
_peloractl()
{
    local word=${COMP_WORDS[COMP_CWORD]} command="" place=0 first="" second="" options="" files="" at
    for ((at = 1; at < COMP_CWORD; at++)); do
        case ${COMP_WORDS[at]} in
        --host | --port | --timeout) ((at++)) ;;
        -*) ;;
        *) [ -z "$command" ] && command=${COMP_WORDS[at]} || ((place++)) ;;
        esac
    done
    case $command in
%1    esac
    local choices=""
    if [ -z "$command" ]; then choices="%2"
    elif [ $place = 0 ]; then choices=$first
    elif [ $place = 1 ]; then choices=$second; fi
    case $word in -*) choices="%3 $options"; files="" ;; esac
    COMPREPLY=($(compgen -W "$choices" -- "$word"))
    [ -n "$files" ] && COMPREPLY+=($(compgen -f -- "$word"))
}
complete -o filenames -F _peloractl peloractl
)")
        .arg(cases, commands.trimmed(), names(commonOptions()));
}
