#pragma once
// The IPv4 setting of the network connection `lan`, and whether it is one that a machine can be reached by.

#include <QString>

struct LanAddress {
    bool dhcp = true;
    QString ip; ///< this and what follows only count without DHCP
    QString mask;
    QString gateway; ///< may be empty: a network without a router
};

enum class LanFault {
    None,
    Ip,      ///< no address, or none that one machine can have
    Mask,    ///< no mask, or one that leaves no room for two machines
    Gateway, ///< no address, or outside the machine's own network
};

/// What is wrong with a setting, the first field that is.
LanFault lanFault(const LanAddress &address);

/// The number of leading ones of a mask such as "255.255.255.0"; -1 when it is none.
int maskLength(const QString &mask);
