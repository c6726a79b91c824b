#pragma once
// How a client finds machines: it asks by UDP, to the group or to a machine's known port, and is told where
// the machine is and what it is called. GUI thread.

#include "platform/Adapters.h"

#include <QByteArray>
#include <QList>

class QObject;
class QUdpSocket;

struct DiscoveryPorts {
    quint16 direct = 45454; ///< asked machine by machine
    quint16 group = 45456;  ///< asked by multicast
};

/// Opens both sockets as children of `owner`. Without a network they stay silent.
QList<QUdpSocket *> openDiscovery(QObject *owner, const DiscoveryPorts &ports = {});
/// Answers the first request that waits at the socket, passing over what is none. Requests behind it have
/// their own turn.
void answerScan(QUdpSocket *socket);

/// Six bytes that are not looked at, then any JSON up to the first zero byte; or just "{}".
bool isScanRequest(const QByteArray &datagram);
/// The last adapter whose description holds one of the two texts; one that is down when there is none.
AdapterInfo findAdapter(const QList<AdapterInfo> &all, const QString &vendor, const QString &bus);
/// The reply of a machine that is reached through `adapter`, which may be down.
QByteArray scanReply(const AdapterInfo &adapter, int port);
