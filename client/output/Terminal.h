#pragma once
// What is said to the person or the script: texts, tables, JSON and a line of progress. Plain text with no
// colours and no cursor tricks when it does not go to a terminal.

#include <QJsonValue>
#include <QStringList>

namespace terminal
{
bool isTerminal();      ///< standard output
bool inputIsTerminal(); ///< somebody can answer a question
bool useColours();      ///< a terminal, and NO_COLOR is not set

void say(const QString &text);      ///< a line to standard output
void complain(const QString &text); ///< a line to standard error
void printJson(const QJsonValue &value);
void printJsonLine(const QJsonValue &value); ///< on one line, for streams
/// Columns of numbers stand to the right. No rows: nothing is printed.
void printTable(const QStringList &headers, const QList<QStringList> &rows);

/// A question on standard error; true for yes. False when nobody is there to answer.
bool confirm(const QString &question);
} // namespace terminal

/// One line that changes in place on a terminal; elsewhere a line whenever `key` changes.
class LiveLine
{
public:
    ~LiveLine() { end(); }
    void show(const QString &text, int key);
    void end();
    static QString bar(double fraction, int width = 30);

private:
    int m_key = -1;
    int m_width = 0;
};

namespace format
{
QString bytes(double count);      ///< "12.3 MB"
QString duration(qint64 seconds); ///< "1:02:03" or "2:03"
QString grams(const QJsonValue &text);
int columns(const QString &text); ///< terminal columns; a Chinese character takes two
} // namespace format
