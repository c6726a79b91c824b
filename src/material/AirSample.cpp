#include "material/AirSample.h"

#include "links/BoardCommands.h"
#include "links/Usb2Can.h"
#include "material/InkLevels.h"

namespace
{
CanMsg airReading(quint8 command)
{
    CanMsg answer;
    sendCommand(canMessage(boardAir, command), &answer);
    return answer;
}

QString threeReadings(quint8 command)
{
    const CanMsg answer = airReading(command);
    return QStringLiteral("%1,%2,%3,")
        .arg(value16(answer, 2))
        .arg(value16(answer, 4))
        .arg(value16(answer, 6));
}
} // namespace

QString airSampleLine()
{
    QString line = QLatin1Char(',') + threeReadings(0x34);
    line += threeReadings(0x35);
    line += QStringLiteral("%1,").arg(value16(airReading(0x36), 1));
    return line + inkLevels().text() + QLatin1String(",,");
}
