#include "platform/LanAddress.h"

#include <QStringList>
#include <optional>

namespace
{
constexpr quint32 loopbackNetwork = 127;
constexpr quint32 firstMulticast = 224; // nothing from here on belongs to one machine
constexpr int longestMask = 30;         // two machines, the network's own address and that to all

/// Four decimal numbers; shorter forms that networks also know are most likely slips here.
std::optional<quint32> number(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char('.'));
    if (parts.size() != 4)
        return std::nullopt;
    quint32 result = 0;
    for (const QString &part : parts) {
        bool isNumber = false;
        const uint value = part.toUInt(&isNumber);
        if (!isNumber || value > 255 || QString::number(value) != part)
            return std::nullopt;
        result = result << 8 | value;
    }
    return result;
}

quint32 hostBits(int maskLength)
{
    return 0xffffffffu >> maskLength;
}

/// Whether one machine of a network of this mask can have the address.
bool isHost(quint32 address, int maskLength)
{
    const quint32 first = address >> 24;
    const quint32 host = address & hostBits(maskLength);
    return first != 0 && first != loopbackNetwork && first < firstMulticast && host != 0 &&
           host != hostBits(maskLength);
}
} // namespace

int maskLength(const QString &mask)
{
    const std::optional<quint32> bits = number(mask);
    for (int length = 1; bits && length < 32; ++length) {
        if (*bits == ~hostBits(length))
            return length;
    }
    return -1;
}

LanFault lanFault(const LanAddress &address)
{
    if (address.dhcp)
        return LanFault::None;
    const std::optional<quint32> ip = number(address.ip);
    if (!ip)
        return LanFault::Ip;
    const int length = maskLength(address.mask);
    if (length < 1 || length > longestMask)
        return LanFault::Mask;
    if (!isHost(*ip, length))
        return LanFault::Ip;
    if (address.gateway.isEmpty())
        return LanFault::None;
    const std::optional<quint32> gateway = number(address.gateway);
    const bool inNetwork = gateway && ((*gateway ^ *ip) & ~hostBits(length)) == 0;
    return inNetwork && *gateway != *ip && isHost(*gateway, length) ? LanFault::None : LanFault::Gateway;
}
