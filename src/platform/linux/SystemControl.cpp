#include "platform/SystemControl.h"

#include "platform/Log.h"
#include "platform/PlatformSettings.h"

#include <QProcess>

#include <unistd.h>

namespace
{
constexpr int networkWaitMs = 10000;
constexpr int noSuchConnection = 10; // exit codes of nmcli

bool isAllowed(const QString &command)
{
    if (platformSetting(QStringLiteral("AllowSystem")).toBool())
        return true;
    LOG_WARNING(QStringLiteral("system command not allowed here, taken as done: ") + command);
    return false;
}

bool runSystemCommand(const QString &command)
{
    return !isAllowed(command) || QProcess::startDetached(QStringLiteral("systemctl"), {command});
}

LanResult runNetworkCommand(const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral("nmcli"), arguments, QIODevice::ReadOnly);
    if (!process.waitForStarted() || !process.waitForFinished(networkWaitMs)) {
        LOG_WARNING(QStringLiteral("nmcli: ") + process.errorString());
        return LanResult::Refused;
    }
    if (process.exitStatus() == QProcess::CrashExit)
        return LanResult::Cancelled;
    if (process.exitCode() == 0)
        return LanResult::Done;
    LOG_WARNING(QStringLiteral("nmcli: %1 %2")
                    .arg(process.exitCode())
                    .arg(QString::fromLocal8Bit(process.readAll()).trimmed()));
    return process.exitCode() == noSuchConnection ? LanResult::NotFound : LanResult::Refused;
}

QStringList addressArguments(const LanAddress &address)
{
    const QString withMask = address.ip + QLatin1Char('/') + QString::number(maskLength(address.mask));
    return {QStringLiteral("connection"),
            QStringLiteral("modify"),
            QStringLiteral("lan"),
            QStringLiteral("ipv4.method"),
            address.dhcp ? QStringLiteral("auto") : QStringLiteral("manual"),
            QStringLiteral("ipv4.addresses"),
            address.dhcp ? QString() : withMask,
            QStringLiteral("ipv4.gateway"),
            address.dhcp ? QString() : address.gateway};
}
} // namespace

void exitNow()
{
    ::_exit(0);
}

bool restartSystem()
{
    return runSystemCommand(QStringLiteral("reboot"));
}

bool powerOffSystem()
{
    return runSystemCommand(QStringLiteral("poweroff"));
}

LanResult setLanAddress(const LanAddress &address)
{
    const QStringList modify = addressArguments(address);
    if (!isAllowed(QStringLiteral("nmcli ") + modify.join(QLatin1Char(' '))))
        return LanResult::Done;
    const LanResult result = runNetworkCommand(modify);
    if (result != LanResult::Done)
        return result;
    // Taken into use without a wait, and Done all the same when it cannot be: with no cable the connection
    // comes up, with this address, when there is one.
    runNetworkCommand({QStringLiteral("--wait"), QStringLiteral("0"), QStringLiteral("connection"),
                       QStringLiteral("up"), QStringLiteral("lan")});
    return LanResult::Done;
}
