#include "platform/Adapters.h"

#include <QFile>
#include <QFileInfo>
#include <QHostAddress>
#include <QNetworkInterface>
#include <QtEndian>

namespace
{
struct BusName {
    const char *subsystem;
    const char *name;
};
constexpr BusName busNames[] = {{"pci", "PCIe"}, {"usb", "USB"}};

QByteArray fileText(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
}

/// Vendor and bus in the words that the choice rules look for; the adapter's own name always ends it.
QString description(const QString &adapter)
{
    const QString device = QLatin1String("/sys/class/net/") + adapter + QLatin1String("/device/");
    QStringList words;
    if (fileText(device + QLatin1String("vendor")) == "0x8086")
        words << QStringLiteral("Intel(R)");
    const QString subsystem = QFileInfo(QFile::symLinkTarget(device + QLatin1String("subsystem"))).fileName();
    for (const BusName &bus : busNames) {
        if (subsystem == QLatin1String(bus.subsystem))
            words << QLatin1String(bus.name);
    }
    words << QStringLiteral("Ethernet") << adapter;
    return words.join(QLatin1Char(' '));
}

/// The default gateway of an adapter out of the kernel's table: addresses are hexadecimal in network order.
QString gateway(const QString &adapter)
{
    for (const QByteArray &line : fileText(QStringLiteral("/proc/net/route")).split('\n')) {
        const QList<QByteArray> fields = line.simplified().split(' ');
        if (fields.size() > 2 && fields.at(0) == adapter.toLocal8Bit() && fields.at(1) == "00000000")
            return QHostAddress(qToBigEndian(quint32(fields.at(2).toUInt(nullptr, 16)))).toString();
    }
    return QString();
}

struct TypeName {
    QNetworkInterface::InterfaceType type;
    const char *name;
};
constexpr TypeName typeNames[] = {{QNetworkInterface::Ethernet, "ETHERNET"},
                                  {QNetworkInterface::Fddi, "FDDI"}};

/// Whoever sets a lent address, whichever program asked for it, gives the kernel the lease's end with it; an
/// address that was set by hand has none.
bool isLent(const QNetworkAddressEntry &entry)
{
    return entry.isLifetimeKnown() && !entry.isPermanent();
}

AdapterInfo adapterInfo(const QNetworkInterface &interface)
{
    AdapterInfo info;
    info.name = interface.name();
    info.description = description(info.name);
    info.mac = interface.hardwareAddress().replace(QLatin1Char(':'), QLatin1Char('-'));
    info.gateway = gateway(info.name);
    info.up = interface.flags().testFlag(QNetworkInterface::IsRunning);
    for (const QNetworkAddressEntry &entry : interface.addressEntries()) {
        if (entry.ip().protocol() != QAbstractSocket::IPv4Protocol)
            continue;
        if (info.addresses.isEmpty()) {
            info.ip = entry.ip().toString();
            info.mask = entry.netmask().toString();
            info.dhcp = isLent(entry);
        }
        info.addresses << entry.ip().toString();
    }
    for (const TypeName &type : typeNames) {
        if (interface.type() == type.type)
            info.type = QLatin1String(type.name);
    }
    return info;
}
} // namespace

QList<AdapterInfo> adapters()
{
    QList<AdapterInfo> found;
    for (const QNetworkInterface &interface : QNetworkInterface::allInterfaces()) {
        if (!interface.flags().testFlag(QNetworkInterface::IsLoopBack))
            found.append(adapterInfo(interface));
    }
    return found;
}
