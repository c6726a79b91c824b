// The client's service bench: what it may do with a device by name.

#include "remote/DeviceCommands.h"

#include "engine/NormValues.h"
#include "links/BoardCommands.h"
#include "remote/RemoteCall.h"
#include "remote/RemoteCommands.h"
#include "remote/WireNumbers.h"

namespace
{
struct Wax {
    const char *color;
    bool (*feedValve)(qint8 valve, bool wait);
    void (*feedNozzle)(quint8 head);
};

/// Null for a colour that is none.
const Wax *waxOf(const RemoteCall &call)
{
    static constexpr Wax waxes[] = {{"Struct", strValveFeedingWax, strNozzleFeedingWax},
                                    {"Support", supValveFeedingWax, supNozzleFeedingWax}};
    const QString color = call["Color"].toString();
    for (const Wax &wax : waxes) {
        if (color == QLatin1String(wax.color))
            return &wax;
    }
    return nullptr;
}

/// A silent board is not waited for, or it would hold the link.
void valveCommand(const RemoteCall &call)
{
    const Wax *wax = waxOf(call);
    if (!wax)
        return call.reply(call.request(), ReplyHead::Echo);
    const bool result = wax->feedValve(wireNumber<qint8>(call["Num"]), false);
    call.replyWith(QStringLiteral("Result"), result, ReplyHead::Echo);
}

void nozzleCommand(const RemoteCall &call)
{
    const Wax *wax = waxOf(call);
    if (!wax)
        return;
    wax->feedNozzle(wireNumber<quint8>(call["Num"]));
    call.replyText(call.text(), ReplyHead::Echo);
}

void dropVelocityCommand(const RemoteCall &call)
{
    const int status =
        alterNormValues(wireNumber<int>(call["HibChainNum"]), wireNumber<int>(call["SupOffset"]),
                        wireNumber<int>(call["StrOffset"]), call["normFactory"].toBool());
    call.reply({{"Status", status}}, ReplyHead::Own);
}

constexpr RemoteCommand devices[] = {
    {"Valve", valveCommand},       {"Nozzle", nozzleCommand},   {"Print", testPrintCommand},
    {"DropMass", dropMassCommand}, {"Support", supportCommand}, {"DropVelocity", dropVelocityCommand},
};
} // namespace

void deviceCommand(const RemoteCall &call)
{
    const QString name = call["Device"].toString();
    for (const RemoteCommand &device : devices) {
        if (name == QLatin1String(device.title))
            return device.run(call);
    }
}
