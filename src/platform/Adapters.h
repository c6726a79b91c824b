#pragma once
// Network adapters of this computer.

#include <QList>
#include <QStringList>

struct AdapterInfo {
    QString name;        ///< the system's name of the adapter
    QString description; ///< vendor and bus, such as "Intel(R) ... PCIe", so that choice rules can look at it
    QString mac;         ///< "AA-BB-CC-DD-EE-FF"
    QString ip;
    QString mask;
    QString gateway;
    bool up = false;
    bool dhcp = false;                      ///< the address was lent by a DHCP server
    QStringList addresses = {};             ///< every IPv4 address, `ip` first
    QString type = QStringLiteral("OTHER"); ///< "ETHERNET", "FDDI" or "OTHER"
};

/// All adapters but loopback, in the system's order. Any thread.
QList<AdapterInfo> adapters();

/// The adapter that the machine's pages show: the first whose description holds "PCIe" or "Intel(R)". One
/// without a name when there is none.
AdapterInfo firstWiredAdapter(const QList<AdapterInfo> &all);
