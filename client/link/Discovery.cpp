#include "link/Discovery.h"

#include <QElapsedTimer>
#include <QHostInfo>
#include <QJsonDocument>
#include <QNetworkDatagram>
#include <QNetworkInterface>
#include <QUdpSocket>
#include <algorithm>

namespace
{
constexpr quint16 directPort = 45454;
constexpr quint16 groupPort = 45456;
constexpr int requestHead = 6; // ignored by the machine
constexpr int answerHead = 6;  // its length field counts keys, so the datagram's own size tells
const char group[] = "239.255.43.21";
const char noAdapter[] = "127.0.0.7"; // what a machine without a usable wired interface calls itself

void ask(QUdpSocket &socket, const QString &address)
{
    const QByteArray request = QByteArray(requestHead, 0) + R"({"Title":"ScanMachine"})";
    for (const QNetworkInterface &interface : QNetworkInterface::allInterfaces()) {
        if (!interface.flags().testFlag(QNetworkInterface::IsUp))
            continue;
        socket.setMulticastInterface(interface);
        socket.writeDatagram(request, QHostAddress(QLatin1String(group)), groupPort);
    }
    socket.writeDatagram(request, QHostAddress(QHostAddress::LocalHost), directPort);
    if (address.isEmpty())
        return;
    for (const QHostAddress &one : QHostInfo::fromName(address).addresses())
        socket.writeDatagram(request, one, directPort);
}
} // namespace

QList<FoundMachine> discoverMachines(int timeoutMs, const QString &address)
{
    QUdpSocket socket;
    socket.bind(QHostAddress(QHostAddress::AnyIPv4), 0);
    ask(socket, address);
    QList<FoundMachine> found;
    QElapsedTimer clock;
    clock.start();
    for (qint64 left = timeoutMs; left > 0; left = timeoutMs - clock.elapsed()) {
        if (!socket.hasPendingDatagrams() && !socket.waitForReadyRead(int(left)))
            continue;
        const QNetworkDatagram datagram = socket.receiveDatagram();
        const QJsonObject answer = QJsonDocument::fromJson(datagram.data().mid(answerHead)).object();
        if (answer["Title"].toString() != QLatin1String("ScanMachine"))
            continue;
        const QString own = answer["Ip"].toString();
        const bool usable = !own.isEmpty() && own != QLatin1String(noAdapter);
        const FoundMachine machine{usable ? own : datagram.senderAddress().toString(), answer};
        const auto same = [&](const FoundMachine &other) { return other.answer == answer; };
        if (std::none_of(found.begin(), found.end(), same))
            found << machine;
    }
    return found;
}
