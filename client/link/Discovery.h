#pragma once
// Finds the machines of the network by multicast.

#include <QJsonObject>
#include <QList>
#include <QString>

struct FoundMachine {
    QString address; ///< where to connect: what it says of itself, or where its answer came from
    QJsonObject answer;
};

/// Asks on every interface, this computer and, if given, one address; waits `timeoutMs` for answers.
QList<FoundMachine> discoverMachines(int timeoutMs, const QString &address = {});
