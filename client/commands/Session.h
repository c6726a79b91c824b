#pragma once
// One run of one command: its arguments, its connection and what it says.

#include "commands/Arguments.h"
#include "link/MachineLink.h"

#include <QJsonArray>
#include <memory>

struct Command;

class Session
{
public:
    Session(const Command &command, const Arguments &arguments);

    const Arguments &arguments() const { return m_arguments; }
    /// The words after the command's name.
    const QStringList &words() const { return m_words; }
    QString word(int at) const { return m_words.value(at); }
    bool json() const { return m_arguments.has("json"); }

    MachineLink &link();
    /// The host that was named, or empty when none was.
    QString namedHost() const;
    int timeoutMs() const { return m_timeoutMs; }

    QJsonObject request(const QJsonObject &object) { return link().request(object); }
    /// Rows of a query that the machine runs. Without `icons` the query must bring a column "Icon" that names
    /// none, or the machine reads a picture out of every model.
    QJsonArray rows(const QString &query);
    QJsonObject status();
    bool isPrinting() { return status()["Status"].toInt() == 1; }

    /// Ends the command when the machine prints and --force is not given; `what` would disturb it.
    void refuseWhilePrinting(const QString &what);
    /// Asks unless --yes; ends the command when the answer is no or nobody can answer.
    void confirm(const QString &question);
    /// A plain sentence for a person, or the object for --json.
    void report(const QString &text, const QJsonObject &object);

private:
    const Command &m_command;
    Arguments m_arguments;
    QStringList m_words;
    int m_timeoutMs;
    std::unique_ptr<MachineLink> m_link;
};

/// A text in a query, quoted so that nothing in it ends it.
QString quoted(QString text);
