#include "platform/SystemControl.h"

#include "platform/Log.h"
#include "platform/PlatformSettings.h"

#include <QProcess>

#include <unistd.h>

namespace
{
bool runSystemCommand(const QString &command)
{
    if (!platformSetting(QStringLiteral("AllowSystem")).toBool()) {
        LOG_WARNING(QStringLiteral("system command not allowed here, taken as done: ") + command);
        return true;
    }
    return QProcess::startDetached(QStringLiteral("systemctl"), {command});
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
