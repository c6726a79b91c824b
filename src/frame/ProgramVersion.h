#pragma once

#include <QString>

/// "4.4.1.4-III". Any thread.
inline QString programVersion()
{
    return QStringLiteral("%1.%2.%3.4-III").arg(4).arg(4).arg(1);
}

/// The machine's model, as pages, clients and update packages name it. Any thread.
inline QString machineModel()
{
    return QStringLiteral("Pelora620");
}
