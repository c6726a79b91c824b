#include "commands/Arguments.h"

#include "link/Failure.h"

#include <algorithm>

namespace
{
bool isOption(const QString &argument)
{
    bool number = false;
    argument.toDouble(&number);
    return argument.size() > 1 && argument.startsWith(QLatin1Char('-')) && !number;
}

QString longName(const QString &argument)
{
    if (argument == QLatin1String("-h"))
        return QStringLiteral("help");
    if (argument == QLatin1String("-y"))
        return QStringLiteral("yes");
    return argument.startsWith(QLatin1String("--")) ? argument.mid(2).section(QLatin1Char('='), 0, 0)
                                                    : QString();
}

const Option *find(const QVector<Option> &options, const QString &name)
{
    const auto at = std::find_if(options.begin(), options.end(),
                                 [&](const Option &option) { return name == QLatin1String(option.name); });
    return at == options.end() ? nullptr : &*at;
}
} // namespace

Arguments::Arguments(const QStringList &line, const QVector<Option> &options)
{
    for (int at = 0; at < line.size(); ++at) {
        const QString &argument = line[at];
        if (argument == QLatin1String("--")) {
            m_words += line.mid(at + 1);
            return;
        }
        if (!isOption(argument)) {
            m_words << argument;
            continue;
        }
        const Option *option = find(options, longName(argument));
        const bool assigned = argument.contains(QLatin1Char('='));
        if (!option || (assigned && !option->value))
            throw Failure{Exit::Usage, QStringLiteral("Unknown option %1.").arg(argument)};
        if (option->value && !assigned && at + 1 == line.size())
            throw Failure{Exit::Usage, QStringLiteral("%1 needs a value.").arg(argument)};
        QString value;
        if (option->value)
            value = assigned ? argument.section(QLatin1Char('='), 1) : line[++at];
        m_values[QLatin1String(option->name)] = value;
    }
}

QString Arguments::firstWord(const QStringList &line, const QVector<Option> &options)
{
    for (int at = 0; at < line.size(); ++at) {
        if (!isOption(line[at]))
            return line[at];
        const Option *option = find(options, longName(line[at]));
        if (!option)
            return {};
        if (option->value && !line[at].contains(QLatin1Char('=')))
            ++at;
    }
    return {};
}

QString Arguments::value(const char *option, const QString &otherwise) const
{
    return m_values.value(QLatin1String(option), otherwise);
}

double Arguments::number(const char *option, double otherwise, double least, double most) const
{
    const QString name = QStringLiteral("--") + QLatin1String(option);
    return has(option) ? numberOf(value(option), name, least, most) : otherwise;
}

int Arguments::integer(const char *option, int otherwise, int least, int most) const
{
    const QString name = QStringLiteral("--") + QLatin1String(option);
    return has(option) ? integerOf(value(option), name, least, most) : otherwise;
}

double numberOf(const QString &word, const QString &what, double least, double most)
{
    bool good = false;
    const double number = word.toDouble(&good);
    if (!good || !(number >= least && number <= most))
        throw Failure{Exit::Usage, QStringLiteral("%1 must be a number from %2 to %3, not \"%4\".")
                                       .arg(what)
                                       .arg(least)
                                       .arg(most)
                                       .arg(word)};
    return number;
}

int integerOf(const QString &word, const QString &what, int least, int most)
{
    bool good = false;
    const int number = word.toInt(&good, 0);
    if (!good || number < least || number > most)
        throw Failure{Exit::Usage, QStringLiteral("%1 must be a whole number from %2 to %3, not \"%4\".")
                                       .arg(what)
                                       .arg(least)
                                       .arg(most)
                                       .arg(word)};
    return number;
}
