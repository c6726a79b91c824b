#pragma once
// The words and options of a command line. Options may stand anywhere; "--name value" and "--name=value" are
// the same; a negative number is a word; "--" ends the options.

#include <QMap>
#include <QStringList>
#include <QVector>

struct Option {
    const char *name;  ///< without the dashes
    const char *value; ///< what stands for its value in the help; null: a switch
    const char *help;
};

class Arguments
{
public:
    /// Throws a Failure for an option that is not in `options`.
    Arguments(const QStringList &line, const QVector<Option> &options);
    /// The first word of the line, whatever options stand around it; only those before it must be known.
    static QString firstWord(const QStringList &line, const QVector<Option> &options);

    const QStringList &words() const { return m_words; }
    QString word(int at) const { return m_words.value(at); }
    bool has(const char *option) const { return m_values.contains(QLatin1String(option)); }
    QString value(const char *option, const QString &otherwise = {}) const;
    /// Throws a Failure when it is no number or out of range.
    double number(const char *option, double otherwise, double least, double most) const;
    int integer(const char *option, int otherwise, int least, int most) const;

private:
    QStringList m_words;
    QMap<QString, QString> m_values;
};

/// The number that a word stands for; `what` names it in the Failure when it is none.
double numberOf(const QString &word, const QString &what, double least, double most);
int integerOf(const QString &word, const QString &what, int least, int most);
