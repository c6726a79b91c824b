// How the machine is: status, heart beat, bottles.

#include "engine/XdmControl.h"
#include "frame/ProgramVersion.h"
#include "material/BackgroundService.h"
#include "material/TempCtl.h"
#include "platform/MachineId.h"
#include "printdata/QueueNotice.h"
#include "remote/RemoteCall.h"
#include "remote/RemoteCommands.h"

#include <QDateTime>
#include <QJsonArray>

namespace
{
const QString protocolVersion = QStringLiteral("1.0.0");

/// "Status" of a bottle.
enum BottleStatus { BottleInPlace = 0, BottleInUse = 1, BottleMissing = 2 };
constexpr int structureType = 1;

QJsonObject bottleRecord(const Bottles &bottles, quint8 slot)
{
    const CardInfo &card = bottles.cards[slot];
    const QString serial = cardText(card.sn);
    const bool inUse = slot == bottles.strUse || slot == bottles.supUse;
    QJsonObject record{{"Name", cardText(card.type)},
                       {"Weight", int(card.weight)},
                       {"Rest", int(card.rest_weight)},
                       {"Sn", serial},
                       {"Status", inUse              ? BottleInUse
                                  : serial.isEmpty() ? BottleMissing
                                                     : BottleInPlace}};
    if (slot >= bottlePair(StructureInk).first)
        record.insert(QStringLiteral("Type"), structureType);
    return record;
}

/// Asked for once: it never changes.
const QString &machineUuid()
{
    static const QString uuid = machineId();
    return uuid;
}
} // namespace

void machineCommand(const RemoteCall &call)
{
    if (call["Action"].toString() != QLatin1String("Status"))
        return;
    const QJsonObject state = xdmControl()->printState();
    const double left = state.value(QLatin1String("LeftTime")).toDouble();
    const int layer = state.value(QLatin1String("PrintLayer")).toInt();
    const int layers = state.value(QLatin1String("SumLayer")).toInt();
    const QDateTime end = QDateTime::currentDateTime().addSecs(qint64(left));
    const QJsonObject reply{{"Updated", takeQueueChanged()},
                            {"Title", "Machine"},
                            {"Status", tempCtl()->mode()},
                            {"PrintLayer", layer},
                            {"SumLayer", layers},
                            {"StartTime", state.value(QLatin1String("StartTime")).toString()},
                            {"RemainingSecs", left},
                            {"Percent", layer * 100.0 / (layers == 0 ? 1 : layers)},
                            {"EndTime", end.toString(QStringLiteral("yyyy-MM-dd hh:mm"))},
                            {"UUID", machineUuid()},
                            {"FirmwareVer", programVersion()}};
    call.reply(reply, ReplyHead::Echo);
}

void heartBeatCommand(const RemoteCall &call)
{
    if (call["Action"].toString() == QLatin1String("Reply"))
        call.reply({{"Title", "HeartBeat"}, {"ProVer", protocolVersion}}, ReplyHead::Echo);
}

void materialBoxCommand(const RemoteCall &call)
{
    if (call["Action"].toString() != QLatin1String("Get"))
        return;
    const Bottles bottles = backgroundService()->cards();
    QJsonArray content;
    for (const BottlePair pair : {bottlePair(SupportInk), bottlePair(StructureInk)}) {
        for (const quint8 slot : {pair.first, pair.second})
            content.append(bottleRecord(bottles, slot));
    }
    call.reply({{"Status", 0}, {"Title", "MaterialBox"}, {"Content", content}}, ReplyHead::Own);
}
