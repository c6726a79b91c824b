#include "Pattern.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QVector>
#include <cmath>

namespace
{
const QString filesKey = QStringLiteral("...");

QString shown(const QJsonValue &value)
{
    const QByteArray text = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(text.mid(1, text.size() - 2));
}

/// "<type example>", if the text is one.
bool typed(const QString &pattern, const QJsonValue &value, QJsonValue *stable, bool *matches)
{
    static const QRegularExpression form("^<(int|number|bool|text) (.*)>$");
    const QRegularExpressionMatch match = form.match(pattern);
    if (!match.hasMatch())
        return false;
    const QString type = match.captured(1), example = match.captured(2);
    if (type == "text") {
        *matches = value.isString();
        *stable = example;
    } else if (type == "bool") {
        *matches = value.isBool();
        *stable = example == "true";
    } else {
        const double number = value.toDouble();
        *matches = value.isDouble() && (type == "number" || number == std::floor(number));
        *stable = example.toDouble();
    }
    return true;
}

QString objectMismatch(const QJsonObject &pattern, const QJsonObject &value, QJsonValue *stable)
{
    QJsonObject all, left = value;
    for (auto wanted = pattern.begin(); wanted != pattern.end(); ++wanted) {
        const bool optional = wanted.key().endsWith('?');
        const QString key = optional ? wanted.key().chopped(1) : wanted.key();
        if (!value.contains(key)) {
            if (optional)
                continue;
            return "key " + key + " is missing";
        }
        QJsonValue part;
        const QString error = mismatch(wanted.value(), left.take(key), &part);
        if (!error.isEmpty())
            return key + ": " + error;
        if (!optional)
            all[key] = part;
    }
    *stable = all;
    return left.isEmpty() ? QString() : "unexpected keys: " + left.keys().join(", ");
}

struct ByteWish {
    quint8 byte;
    bool any;
};

QVector<ByteWish> byteWishes(const QString &pattern)
{
    QVector<ByteWish> wishes;
    for (const QString &token : pattern.split(' ', Qt::SkipEmptyParts)) {
        const int count = token.contains('*') ? token.section('*', 1).toInt() : 1;
        const ByteWish wish{quint8(token.left(2).toInt(nullptr, 16)), token.contains('?')};
        wishes += QVector<ByteWish>(count, wish);
    }
    return wishes;
}
} // namespace

QString mismatch(const QJsonValue &pattern, const QJsonValue &value, QJsonValue *stable)
{
    bool matches = pattern.type() == value.type();
    if (pattern.isString() && typed(pattern.toString(), value, stable, &matches))
        return matches ? QString() : pattern.toString() + " expected, not " + shown(value);
    if (matches && pattern.isObject())
        return objectMismatch(pattern.toObject(), value.toObject(), stable);
    if (matches && pattern.isArray()) {
        const QJsonArray wanted = pattern.toArray(), found = value.toArray();
        QJsonArray all;
        for (int at = 0; at < qMin(wanted.size(), found.size()); ++at) {
            QJsonValue part;
            const QString error = mismatch(wanted[at], found[at], &part);
            if (!error.isEmpty())
                return QString("[%1] %2").arg(at).arg(error);
            all << part;
        }
        *stable = all;
        return wanted.size() == found.size()
                   ? QString()
                   : QString("%1 entries expected, not %2").arg(wanted.size()).arg(found.size());
    }
    *stable = value;
    return matches && pattern == value ? QString() : shown(pattern) + " expected, not " + shown(value);
}

QString mismatch(const QString &bytePattern, const QByteArray &bytes, QByteArray *stable)
{
    const QVector<ByteWish> wishes = byteWishes(bytePattern);
    *stable = bytesOf(bytePattern);
    bool equal = wishes.size() == bytes.size();
    for (int at = 0; equal && at < bytes.size(); ++at)
        equal = wishes[at].any || wishes[at].byte == quint8(bytes[at]);
    return equal ? QString() : bytePattern + " expected, not " + QString::fromLatin1(bytes.toHex(' '));
}

QByteArray bytesOf(const QString &bytePattern)
{
    QByteArray bytes;
    for (const ByteWish &wish : byteWishes(bytePattern))
        bytes += char(wish.byte);
    return bytes;
}

QJsonObject withFiles(QJsonObject pattern, const QString &installFolder)
{
    QFile file(installFolder + '/' + pattern.take(filesKey).toString());
    if (!file.open(QIODevice::ReadOnly))
        return pattern;
    const QJsonObject stored = QJsonDocument::fromJson(file.readAll()).object();
    for (auto key = stored.begin(); key != stored.end(); ++key) {
        if (!pattern.contains(key.key()))
            pattern[key.key()] = key.value();
    }
    return pattern;
}
