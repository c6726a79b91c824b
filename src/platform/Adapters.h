#pragma once
// Network adapters of this computer.

#include <QList>
#include <QString>

struct AdapterInfo {
    QString name;        ///< the system's name of the adapter
    QString description; ///< vendor and bus, such as "Intel(R) ... PCIe", so that choice rules can look at it
    QString mac;         ///< "AA-BB-CC-DD-EE-FF"
    QString ip;
    QString mask;
    QString gateway;
    bool up = false;
};

/// All adapters but loopback, in the system's order. Any thread.
QList<AdapterInfo> adapters();
