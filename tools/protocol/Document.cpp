#include "Document.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QRegularExpression>

namespace
{
constexpr int lineWidth = 118;
constexpr int bytesPerLine = 16;

QString pretty(const QJsonValue &value, int indent)
{
    if (!value.isObject() && !value.isArray()) {
        const QByteArray text = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
        return QString::fromUtf8(text.mid(1, text.size() - 2));
    }
    const QChar open = value.isObject() ? '{' : '[', close = value.isObject() ? '}' : ']';
    QStringList parts;
    const QJsonObject object = value.toObject();
    for (auto key = object.begin(); key != object.end(); ++key)
        parts << '"' + key.key() + "\": " + pretty(key.value(), indent + 2);
    for (const QJsonValue &entry : value.toArray())
        parts << pretty(entry, indent + 2);
    const QString line = open + parts.join(", ") + close;
    if (indent + line.size() <= lineWidth && !line.contains('\n'))
        return line;
    // Short parts share a line.
    QStringList lines;
    for (const QString &part : parts) {
        const bool joins = !lines.isEmpty() && indent + 4 + lines.last().size() + part.size() <= lineWidth &&
                           !part.contains('\n') && !lines.last().contains('\n');
        if (joins)
            lines.last() += ", " + part;
        else
            lines << part;
    }
    const QString gap = '\n' + QString(indent + 2, ' ');
    return open + gap + lines.join(',' + gap) + '\n' + QString(indent, ' ') + close;
}

QString marked(const QString &text, const QString &mark)
{
    QStringList lines = text.trimmed().split('\n');
    for (int at = 0; at < lines.size(); ++at)
        lines[at].prepend(at ? QString(mark.size(), ' ') : mark);
    return lines.join('\n') + '\n';
}
} // namespace

QString textOf(const QByteArray &payload)
{
    const QJsonDocument document = QJsonDocument::fromJson(payload);
    const bool laidOut = payload.size() <= lineWidth && !payload.trimmed().contains('\n'); // by its sender
    return document.isObject() && !laidOut ? pretty(document.object(), 0) : QString::fromUtf8(payload);
}

QString dumpOf(const QByteArray &bytes)
{
    QStringList lines;
    bool folded = false;
    for (int at = 0; at < bytes.size(); at += bytesPerLine) {
        const QByteArray part = bytes.mid(at, bytesPerLine);
        const bool repeats = at && part == bytes.mid(at - bytesPerLine, bytesPerLine);
        if (repeats && !folded)
            lines << QStringLiteral("*");
        folded = repeats;
        if (repeats)
            continue;
        QString characters;
        for (const char byte : part)
            characters += byte >= ' ' && byte <= '~' ? QChar(byte) : QChar('.');
        lines << QString("%1  %2  %3")
                     .arg(at, 4, 16, QChar('0'))
                     .arg(QString::fromLatin1(part.toHex(' ')).leftJustified(3 * bytesPerLine - 1),
                          characters);
    }
    return lines.join('\n');
}

QString withExchanges(const QString &document, const QVector<Exchange> &exchanges, QStringList *errors)
{
    QMap<QString, QString> blocks;
    for (const Exchange &exchange : exchanges)
        blocks[exchange.name] =
            "```\n" + marked(exchange.request, "> ") + marked(exchange.reply, "< ") + "```\n";
    static const QRegularExpression place("(<!-- recorded ([^ ]+) -->\n).*?(<!-- end -->)",
                                          QRegularExpression::DotMatchesEverythingOption);
    QString filled;
    int from = 0;
    for (auto match = place.globalMatch(document); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        const QString name = found.captured(2);
        if (!blocks.contains(name))
            *errors << "no exchange " + name + " was recorded";
        filled += document.mid(from, found.capturedStart() - from) + found.captured(1) + blocks.take(name) +
                  found.captured(3);
        from = found.capturedEnd();
    }
    for (const QString &name : blocks.keys())
        *errors << "the document has no place for " + name;
    return filled + document.mid(from);
}
