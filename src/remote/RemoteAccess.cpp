#include "remote/RemoteAccess.h"

#include "platform/Log.h"
#include "platform/PlatformSettings.h"

#include <QJsonArray>

namespace
{
// A dual-stack listener sees an IPv4 peer as ::ffff:a.b.c.d, which is in no IPv4 network.
QHostAddress plainAddress(const QHostAddress &address)
{
    bool isIPv4 = false;
    const QHostAddress plain(address.toIPv4Address(&isIPv4));
    return isIPv4 ? plain : address;
}

bool holds(const QString &network, const QHostAddress &peer)
{
    const QPair<QHostAddress, int> subnet = QHostAddress::parseSubnet(network);
    if (subnet.second < 0)
        LOG_WARNING(QStringLiteral("RemoteAllow: no address or network: %1").arg(network));
    return subnet.second >= 0 && peer.isInSubnet(subnet);
}
} // namespace

QHostAddress remoteListenAddress()
{
    const QJsonValue setting = platformSetting(QStringLiteral("RemoteListen"));
    if (setting.isUndefined())
        return QHostAddress::Any;
    const QHostAddress address(setting.toString());
    if (address.isNull())
        LOG_WARNING(QStringLiteral("RemoteListen: no address: %1").arg(setting.toString()));
    return address;
}

bool mayConnect(const QHostAddress &peer)
{
    const QJsonValue allowed = platformSetting(QStringLiteral("RemoteAllow"));
    if (allowed.isUndefined())
        return true;
    const QHostAddress plain = plainAddress(peer);
    for (const QJsonValue &network : allowed.toArray()) {
        if (holds(network.toString(), plain))
            return true;
    }
    return false;
}
