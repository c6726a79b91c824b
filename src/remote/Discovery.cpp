#include "remote/Discovery.h"

#include "frame/JsonConfig.h"
#include "frame/ProgramVersion.h"
#include "platform/Log.h"
#include "remote/CTcpServer.h"

#include <QJsonDocument>
#include <QUdpSocket>

// Reply, 6 bytes and the indented JSON text:
//   0  2  0x5A 0xA5
//   2  2  number of keys + 6, little-endian; a length to no reader, who takes that of the datagram
//   4  2  0xFF 0xFF

namespace
{
const QLatin1String groupAddress("239.255.43.21");
const QLatin1String noAdapterAddress("127.0.0.7"); // tells clients: no wired network to be used
constexpr int requestHead = 6;
constexpr int replyHead = 6;

/// The wired adapter of the machine's computer.
AdapterInfo machineAdapter()
{
    return findAdapter(adapters(), QStringLiteral("Intel(R)"), QStringLiteral("PCIe"));
}
} // namespace

QList<QUdpSocket *> openDiscovery(QObject *owner, const DiscoveryPorts &ports)
{
    auto *direct = new QUdpSocket(owner);
    const bool bound = direct->bind(QHostAddress::AnyIPv4, ports.direct, QUdpSocket::ShareAddress);
    direct->setSocketOption(QAbstractSocket::MulticastLoopbackOption, 0);
    LOG_WARNING(QStringLiteral("udp bind port=%1 result=%2").arg(ports.direct).arg(bound));

    auto *group = new QUdpSocket(owner);
    if (group->bind(QHostAddress::AnyIPv4, ports.group, QUdpSocket::ShareAddress))
        group->joinMulticastGroup(QHostAddress(groupAddress));
    return {direct, group};
}

void answerScan(QUdpSocket *socket)
{
    while (socket->hasPendingDatagrams()) {
        QByteArray datagram(int(qMax<qint64>(0, socket->pendingDatagramSize())), Qt::Uninitialized);
        QHostAddress sender;
        quint16 port = 0;
        const qint64 size = socket->readDatagram(datagram.data(), datagram.size(), &sender, &port);
        if (size < 0)
            return;
        datagram.truncate(int(size));
        if (!isScanRequest(datagram))
            continue;
        socket->writeDatagram(scanReply(machineAdapter(), remotePort()), sender, port);
        return;
    }
}

bool isScanRequest(const QByteArray &datagram)
{
    if (datagram == "{}")
        return true;
    QByteArray text = datagram.mid(requestHead);
    const int end = text.indexOf('\0');
    if (end >= 0)
        text.truncate(end);
    QJsonParseError error;
    QJsonDocument::fromJson(text, &error);
    return error.error == QJsonParseError::NoError;
}

AdapterInfo findAdapter(const QList<AdapterInfo> &all, const QString &vendor, const QString &bus)
{
    AdapterInfo found;
    for (const AdapterInfo &adapter : all) {
        if (adapter.description.contains(vendor) || adapter.description.contains(bus))
            found = adapter;
    }
    return found;
}

QByteArray scanReply(const AdapterInfo &adapter, int port)
{
    QJsonObject reply{{"Title", "ScanMachine"},
                      {"Ip", adapter.up ? adapter.ip : noAdapterAddress},
                      {"Port", port},
                      {"Type", machineModel()},
                      {"Name", machineNameConfig()->getString(QStringLiteral("Name"))}};
    if (adapter.up)
        reply.insert(QStringLiteral("Mac"), adapter.mac);
    for (const char *key : {"Material", "Precision", "Volume", "Style"})
        reply.insert(QLatin1String(key), settingsConfig()->getString(QLatin1String(key)));

    const int keys = reply.size() + replyHead;
    QByteArray datagram("\x5a\xa5", 2);
    datagram.append(char(keys)).append(char(keys >> 8)).append("\xff\xff", 2);
    return datagram + QJsonDocument(reply).toJson();
}
