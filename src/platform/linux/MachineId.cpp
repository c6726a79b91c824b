#include "platform/MachineId.h"

#include <QFile>

QString machineId()
{
    QFile file(QStringLiteral("/sys/class/dmi/id/product_uuid"));
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromLatin1(file.readAll()).trimmed().toUpper();
}
