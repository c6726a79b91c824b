#include "commands/Session.h"

#include "commands/Command.h"
#include "link/Failure.h"
#include "output/Terminal.h"

namespace
{
constexpr double longestTimeoutS = 24 * 3600;
constexpr int lastPort = 65535;

[[noreturn]] void wrongWords(const Command &command)
{
    throw Failure{
        Exit::Usage,
        QStringLiteral("Usage: peloractl %1 %2").arg(QLatin1String(command.name), command.arguments)};
}
} // namespace

Session::Session(const Command &command, const Arguments &arguments)
    : m_command(command), m_arguments(arguments), m_words(arguments.words().mid(1)),
      m_timeoutMs(int(1000 * arguments.number("timeout", command.timeoutS, 0.05, longestTimeoutS)))
{
    if (m_words.size() < command.least || (command.most >= 0 && m_words.size() > command.most))
        wrongWords(command);
}

QString Session::namedHost() const
{
    return m_arguments.value("host", qEnvironmentVariable("PELORA_HOST"));
}

MachineLink &Session::link()
{
    if (m_link)
        return *m_link;
    QString host = namedHost().isEmpty() ? QStringLiteral("127.0.0.1") : namedHost();
    int port = MachineLink::usualPort;
    if (host.count(QLatin1Char(':')) == 1) { // more of them are an IPv6 address
        port =
            integerOf(host.section(QLatin1Char(':'), 1), QStringLiteral("The port in the host"), 1, lastPort);
        host = host.section(QLatin1Char(':'), 0, 0);
    }
    port = m_arguments.integer("port", port, 1, lastPort);
    m_link = std::make_unique<MachineLink>(host, quint16(port), m_timeoutMs);
    return *m_link;
}

QJsonArray Session::rows(const QString &query)
{
    return request({{"Title", "FileList"}, {"Action", query}})["Queue"].toArray();
}

QJsonObject Session::status()
{
    return request({{"Title", "Machine"}, {"Action", "Status"}});
}

void Session::refuseWhilePrinting(const QString &what)
{
    if (!m_arguments.has("force") && isPrinting())
        throw Failure{Exit::Refused,
                      QStringLiteral("The machine is printing; %1 would disturb it. Wait for the end, "
                                     "or say --force.")
                          .arg(what)};
}

void Session::confirm(const QString &question)
{
    if (m_arguments.has("yes"))
        return;
    if (!terminal::inputIsTerminal())
        throw Failure{Exit::Usage,
                      QStringLiteral("Nothing was changed: say --yes where nobody can be asked.")};
    if (!terminal::confirm(question))
        throw Failure{Exit::Refused, QStringLiteral("Nothing was changed.")};
}

void Session::report(const QString &text, const QJsonObject &object)
{
    if (json())
        terminal::printJson(object);
    else
        terminal::say(text);
}

QString quoted(QString text)
{
    return QLatin1Char('\'') + text.replace(QLatin1Char('\''), QLatin1String("''")) + QLatin1Char('\'');
}
