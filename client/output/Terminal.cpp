#include "output/Terminal.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>
#include <algorithm>
#include <cstdio>
#ifdef Q_OS_WIN
#include <io.h>
#define isatty _isatty
#define fileno _fileno
#else
#include <unistd.h>
#endif

namespace
{
QByteArray jsonText(const QJsonValue &value, QJsonDocument::JsonFormat format)
{
    const QJsonDocument document =
        value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    return document.toJson(format);
}

bool isNumber(const QString &text)
{
    bool number = false;
    text.toDouble(&number);
    return number || text.isEmpty() || text == QLatin1String("-");
}

/// Control characters out of a name must not steer the terminal.
QString harmless(QString text)
{
    for (QChar &character : text) {
        if (character.category() == QChar::Other_Control && character != QLatin1Char('\n'))
            character = QLatin1Char('?');
    }
    return text;
}

QString padded(const QString &text, int width, bool right)
{
    const QString blanks(qMax(0, width - format::columns(text)), QLatin1Char(' '));
    return right ? blanks + text : text + blanks;
}
} // namespace

bool terminal::isTerminal()
{
    return isatty(fileno(stdout));
}

bool terminal::inputIsTerminal()
{
    return isatty(fileno(stdin));
}

bool terminal::useColours()
{
    return isTerminal() && !qEnvironmentVariableIsSet("NO_COLOR");
}

void terminal::say(const QString &text)
{
    std::printf("%s\n", harmless(text).toUtf8().constData());
    std::fflush(stdout);
}

void terminal::complain(const QString &text)
{
    std::fprintf(stderr, "%s\n", harmless(text).toUtf8().constData());
}

void terminal::printJson(const QJsonValue &value)
{
    std::printf("%s", jsonText(value, QJsonDocument::Indented).constData());
}

void terminal::printJsonLine(const QJsonValue &value)
{
    std::printf("%s\n", jsonText(value, QJsonDocument::Compact).constData());
    std::fflush(stdout);
}

void terminal::printTable(const QStringList &headers, const QList<QStringList> &rows)
{
    if (rows.isEmpty())
        return;
    QVector<int> widths;
    QVector<bool> right;
    for (int column = 0; column < headers.size(); ++column) {
        int width = format::columns(headers[column]);
        bool numbers = true;
        for (const QStringList &row : rows) {
            width = qMax(width, format::columns(row.value(column)));
            numbers = numbers && isNumber(row.value(column));
        }
        widths << width;
        right << numbers;
    }
    for (const QStringList &row : QList<QStringList>{headers} + rows) {
        QString line;
        for (int column = 0; column < headers.size(); ++column)
            line += padded(row.value(column), widths[column], right[column]) + QLatin1String("  ");
        while (line.endsWith(QLatin1Char(' ')))
            line.chop(1);
        say(line);
    }
}

bool terminal::confirm(const QString &question)
{
    if (!inputIsTerminal())
        return false;
    std::fflush(stdout);
    std::fprintf(stderr, "%s [y/N] ", question.toUtf8().constData());
    const QString answer = QTextStream(stdin).readLine().trimmed().toLower();
    return answer == QLatin1String("y") || answer == QLatin1String("yes");
}

void LiveLine::show(const QString &text, int key)
{
    if (terminal::isTerminal()) {
        const int width = format::columns(text);
        std::printf("\r%s", padded(harmless(text), m_width, false).toUtf8().constData());
        std::fflush(stdout);
        m_width = width;
    } else if (key != m_key) {
        terminal::say(text);
    }
    m_key = key;
}

void LiveLine::end()
{
    if (m_width > 0)
        std::printf("\n");
    m_width = 0;
    m_key = -1;
}

QString LiveLine::bar(double fraction, int width)
{
    const int full = int(qBound(0.0, fraction, 1.0) * width);
    return QLatin1Char('[') + QString(full, QLatin1Char('#')).leftJustified(width, QLatin1Char('.')) +
           QLatin1Char(']');
}

QString format::bytes(double count)
{
    const char *const units[] = {"B", "kB", "MB", "GB"};
    int unit = 0;
    for (; count >= 1000 && unit < 3; ++unit)
        count /= 1000;
    return QStringLiteral("%1 %2").arg(count, 0, 'f', unit == 0 ? 0 : 1).arg(QLatin1String(units[unit]));
}

QString format::duration(qint64 seconds)
{
    const QLatin1Char zero('0');
    const qint64 hours = seconds / 3600;
    const QString rest = QStringLiteral("%1:%2")
                             .arg(seconds / 60 % 60, hours ? 2 : 1, 10, zero)
                             .arg(seconds % 60, 2, 10, zero);
    return hours ? QStringLiteral("%1:%2").arg(hours).arg(rest) : rest;
}

QString format::grams(const QJsonValue &text)
{
    const QString number = text.toVariant().toString();
    return number.isEmpty() ? QStringLiteral("-") : QString::number(number.toDouble(), 'f', 1);
}

int format::columns(const QString &text)
{
    int columns = 0;
    for (const uint point : text.toUcs4()) {
        const bool wide = (point >= 0x1100 && point <= 0x115F) || (point >= 0x2E80 && point <= 0xA4CF) ||
                          (point >= 0xAC00 && point <= 0xD7A3) || (point >= 0xF900 && point <= 0xFAFF) ||
                          (point >= 0xFE30 && point <= 0xFE6F) || (point >= 0xFF00 && point <= 0xFF60) ||
                          (point >= 0xFFE0 && point <= 0xFFE6) || point >= 0x1F300;
        const bool mark = QChar::category(point) == QChar::Mark_NonSpacing;
        columns += mark ? 0 : wide ? 2 : 1;
    }
    return columns;
}
