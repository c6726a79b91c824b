#include "output/Difference.h"

#include "output/Terminal.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace
{
QString text(const QJsonValue &value)
{
    const QByteArray array = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(array.mid(1, array.size() - 2));
}

QVector<Change> ofArrays(const QJsonArray &before, const QJsonArray &after, const QString &path)
{
    QVector<Change> changes;
    for (int i = 0; i < qMax(before.size(), after.size()); ++i) {
        const QJsonValue none(QJsonValue::Undefined);
        changes += difference(i < before.size() ? before[i] : none, i < after.size() ? after[i] : none,
                              QStringLiteral("%1[%2]").arg(path).arg(i));
    }
    return changes;
}

QVector<Change> ofObjects(const QJsonObject &before, const QJsonObject &after, const QString &path)
{
    QStringList keys = before.keys() + after.keys();
    keys.sort();
    keys.removeDuplicates();
    QVector<Change> changes;
    for (const QString &key : keys)
        changes += difference(before.value(key), after.value(key), path.isEmpty() ? key : path + '.' + key);
    return changes;
}

QString line(const Change &change, int width)
{
    const bool added = change.before.isUndefined();
    const bool removed = change.after.isUndefined();
    const QString values = added     ? text(change.after)
                           : removed ? text(change.before)
                                     : text(change.before) + QStringLiteral(" -> ") + text(change.after);
    const QString blanks(width - format::columns(change.path) + 2, QLatin1Char(' '));
    return QLatin1String(added ? "+ " : removed ? "- " : "  ") + change.path + blanks + values;
}
} // namespace

bool Change::changesType() const
{
    return !before.isUndefined() && !after.isUndefined() && before.type() != after.type();
}

QVector<Change> difference(const QJsonValue &before, const QJsonValue &after, const QString &path)
{
    if (before == after)
        return {};
    if (before.isObject() && after.isObject())
        return ofObjects(before.toObject(), after.toObject(), path);
    if (before.isArray() && after.isArray())
        return ofArrays(before.toArray(), after.toArray(), path);
    return {{path, before, after}};
}

void printDifference(const QVector<Change> &changes)
{
    int width = 0;
    for (const Change &change : changes)
        width = qMax(width, format::columns(change.path));
    for (const Change &change : changes)
        terminal::say(line(change, width));
}
