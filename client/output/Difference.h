#pragma once
// What sets two JSON documents apart, key by key.

#include <QJsonObject>
#include <QVector>

struct Change {
    QString path;             ///< "XMoveSpeed", "Nozzle1Fan.norTemp", "Materials[0].Name"
    QJsonValue before, after; ///< undefined: not there
    /// A number that became a text, or a whole group that became something else.
    bool changesType() const;
};

QVector<Change> difference(const QJsonValue &before, const QJsonValue &after, const QString &path = {});
/// One aligned line a change: "  XMoveSpeed  400 -> 500".
void printDifference(const QVector<Change> &changes);
