#include "Commands.h"

#include "Bridge.h"
#include "CommandWords.h"
#include "FaultRegister.h"
#include "Machine.h"
#include "Site.h"

#include <QJsonArray>

using words::badArguments;
using words::readSwitch;

namespace
{
const QString ok;

QString door(CommandContext &context, const QStringList &a, QJsonObject *)
{
    bool closed = false;
    if (!readSwitch(a.value(1), "close", "open", &closed) || (a[0] != "front" && a[0] != "inkbox"))
        return badArguments;
    (a[0] == "front" ? context.machine.frontDoorClosed : context.machine.inkDoorClosed) = closed;
    return ok;
}

QString platform(CommandContext &context, const QStringList &a, QJsonObject *)
{
    if (a[0] == "empty" || a[0] == "take")
        context.machine.emptyPlatform();
    if (a[0] != "empty" && !readSwitch(a[0], "put", "take", &context.machine.platformSeated))
        return badArguments;
    return ok;
}

QString usb(CommandContext &context, const QStringList &a, QJsonObject *)
{
    QString error;
    if (a[0] == "plug" && a.size() >= 2)
        context.site.plug(a[1], a.value(2), &error);
    else if (a[0] == "unplug")
        context.site.unplug(a.value(1), &error);
    else
        return badArguments;
    return error;
}

QString silence(CommandContext &context, const QStringList &a, QJsonObject *)
{
    bool on = false;
    if (!readSwitch(a.value(1), "on", "off", &on))
        return badArguments;
    if (on)
        context.bridge.faults.silent.insert(a[0].toInt());
    else
        context.bridge.faults.silent.remove(a[0].toInt());
    return ok;
}

QString board(CommandContext &context, const QStringList &a, QJsonObject *)
{
    bool dies = false;
    if (!readSwitch(a.value(1), "die", "revive", &dies))
        return badArguments;
    if (dies)
        context.bridge.faults.dead.insert(a[0].toInt());
    else
        context.bridge.faults.dead.remove(a[0].toInt());
    return ok;
}

QString frames(CommandContext &context, const QStringList &a, QJsonObject *)
{
    LineFaults &faults = context.bridge.faults;
    bool number = false;
    const double rate = a.value(1).toDouble(&number);
    if (!number || rate < 0 || rate > 1)
        return badArguments;
    if (a[0] == "drop")
        faults.drop = rate;
    else if (a[0] == "corrupt")
        faults.corrupt = rate;
    else if (a[0] == "late")
        faults.late = rate;
    else
        return badArguments;
    if (a.size() > 2)
        faults.lateMs = a[2].toInt();
    return ok;
}

QString stick(CommandContext &context, const QStringList &a, QJsonObject *)
{
    Axis *axis = a[0].size() == 1 ? context.machine.axis(a[0][0]) : nullptr;
    bool on = false;
    if (!axis || !readSwitch(a.value(1), "on", "off", &on))
        return badArguments;
    context.machine.settle();
    axis->setStuck(on, context.machine.now());
    return ok;
}

QString holdTransfer(CommandContext &context, const QStringList &a, QJsonObject *)
{
    return readSwitch(a[0], "on", "off", &context.machine.holdTransfer) ? ok : badArguments;
}

QString leveller(CommandContext &context, const QStringList &a, QJsonObject *)
{
    bool slow = false;
    if (!readSwitch(a[0], "slow", "normal", &slow))
        return badArguments;
    context.machine.setLevellerSlow(slow);
    return ok;
}

QString freezeSensor(CommandContext &context, const QStringList &a, QJsonObject *)
{
    Lag *sensor = context.machine.climate().find(a[0]);
    bool on = false;
    if (!sensor)
        return "no sensor " + a[0] + "; see 'sensors'";
    if (!readSwitch(a.value(1), "on", "off", &on))
        return badArguments;
    sensor->setFrozen(on, context.machine.now());
    return ok;
}

QString drift(CommandContext &context, const QStringList &a, QJsonObject *)
{
    Lag *sensor = context.machine.climate().find(a[0]);
    bool number = false;
    const double degrees = a.value(1).toDouble(&number);
    if (!sensor)
        return "no sensor " + a[0] + "; see 'sensors'";
    if (!number)
        return badArguments;
    sensor->setDrift(degrees);
    return ok;
}

QString noise(CommandContext &context, const QStringList &a, QJsonObject *)
{
    bool number = false;
    const double amplitude = a[0].toDouble(&number);
    if (!number || amplitude < 0)
        return badArguments;
    context.machine.climate().setNoise(amplitude);
    return ok;
}

QString sensors(CommandContext &context, const QStringList &, QJsonObject *answer)
{
    QJsonObject readings;
    Climate &climate = context.machine.climate();
    for (const QString &name : climate.names())
        readings[name] = climate.find(name)->reading(context.machine.now());
    (*answer)["sensors"] = readings;
    return ok;
}

QString state(CommandContext &context, const QStringList &, QJsonObject *answer)
{
    (*answer)["state"] = stateOf(context.machine, context.bridge);
    return ok;
}

QString statedSleep(CommandContext &context, const QStringList &a, QJsonObject *)
{
    bool number = false;
    const double milliseconds = a[0].toDouble(&number);
    if (!number || milliseconds < 0)
        return badArguments;
    context.setStatedSleep(milliseconds);
    return ok;
}

QString report(CommandContext &context, const QStringList &a, QJsonObject *)
{
    return context.report(a.value(0));
}

QString picture(CommandContext &context, const QStringList &a, QJsonObject *)
{
    return context.picture(a[0]);
}

QString stop(CommandContext &context, const QStringList &, QJsonObject *)
{
    context.stop();
    return ok;
}

QString help(CommandContext &, const QStringList &, QJsonObject *answer)
{
    QJsonArray list;
    for (const Command &command : commands())
        list.append(QJsonObject{{"name", command.name},
                                {"arguments", command.arguments},
                                {"help", command.help},
                                {"fault", command.fault}});
    (*answer)["commands"] = list;
    return ok;
}

std::vector<Command> machineCommands()
{
    return {
        {"state", "", "Axes, leveller, doors, heads, part, violations.", false, state},
        {"sensors", "", "Every sensor by name with its reading.", false, sensors},
        {"help", "", "This list.", false, help},
        {"door", "front|inkbox open|close", "Opens or closes a door.", false, door},
        {"platform", "take|put|empty", "Takes the platform away or seats it; empty removes the part.", false,
         platform},
        {"usb", "plug FOLDER [NAME] | unplug [NAME]", "A USB disk that holds FOLDER.", false, usb},
        {"report", "[FILE]", "Writes report and pictures now.", false, report},
        {"stated-sleep", "MS",
         "Sleeps that are stated for one gap between two sweeps; the report takes them off.", false,
         statedSleep},
        {"picture", "FILE", "Saves a picture of the panel.", false, picture},
        {"stop", "", "Writes the report and ends the machine.", false, stop},
        {"silence", "BOARD on|off", "The board carries commands out and does not answer.", true, silence},
        {"board", "BOARD die|revive", "The board neither hears nor answers.", true, board},
        {"frames", "drop|corrupt|late RATE [MS]",
         "Answers are lost, damaged, or come MS (2500, real time) late; RATE 0 to 1.", true, frames},
        {"stick", "x|y|z on|off", "The axis stands still and reports that it moves.", true, stick},
        {"hold-transfer", "on|off", "Pages are fired, the head boards never say so.", true, holdTransfer},
        {"leveller", "slow|normal", "The leveller does not reach its speed.", true, leveller},
        {"freeze-sensor", "SENSOR on|off", "The sensor stays at its present reading.", true, freezeSensor},
        {"drift", "SENSOR AMOUNT", "The sensor reads this much too high.", true, drift},
        {"noise", "AMOUNT", "Every reading trembles by up to this much.", true, noise},
    };
}
} // namespace

const std::vector<Command> &commands()
{
    static const std::vector<Command> table = [] {
        std::vector<Command> all = machineCommands();
        for (const std::vector<Command> &part : {cardCommands(), inkCommands(), loaderCommands()})
            all.insert(all.end(), part.begin(), part.end());
        return all;
    }();
    return table;
}

QJsonObject runCommand(CommandContext &context, const QStringList &words)
{
    context.machine.settle(); // what a command changes holds from now on
    const auto failure = [](const QString &why) { return QJsonObject{{"ok", false}, {"error", why}}; };
    for (const Command &command : commands()) {
        if (words.value(0) != QLatin1String(command.name))
            continue;
        const bool needsOne = *command.arguments && *command.arguments != '[';
        if (needsOne && words.size() < 2)
            return failure(QStringLiteral("%1 needs: %2").arg(command.name, command.arguments));
        QJsonObject answer{{"ok", true}};
        const QString error = command.run(context, words.mid(1), &answer);
        if (error == badArguments)
            return failure(QStringLiteral("%1 needs: %2").arg(command.name, command.arguments));
        if (!error.isEmpty())
            return failure(error);
        if (context.faults)
            context.faults->note(command, words);
        return answer;
    }
    return failure("no command '" + words.value(0) + "'; see 'help'");
}

QJsonObject stateOf(Machine &machine, Bridge &bridge)
{
    machine.settle();
    QJsonArray heads;
    for (int number = 1; number <= geometry::heads; ++number)
        heads.append(QJsonObject{{"degrees", machine.climate().heater(number, 1).reading(machine.now())}});
    QJsonObject state{
        {"machineSeconds", machine.now()},
        {"x", QJsonObject{{"counts", machine.xCounts()}, {"moving", machine.xMoving()}}},
        {"y", machine.yPosition()},
        {"z", machine.zPosition()},
        {"yzMoving", machine.yzMoving()},
        {"leveller", QJsonObject{{"set", machine.levellerSetting()}, {"speed", machine.levellerSpeed()}}},
        {"doors", QJsonObject{{"front", machine.frontDoorClosed ? "closed" : "open"},
                              {"inkbox", machine.inkDoorClosed ? "closed" : "open"}}},
        {"platform", machine.platformSeated},
        {"inkStackCoupled", machine.stackCoupled()},
        {"partTop", machine.partTop()},
        {"heads", heads},
        {"encoder", machine.encoderPosition()},
        {"requests", double(bridge.requests())},
        {"passes", int(machine.recorder().passes().size())},
        {"layers", int(machine.recorder().layers())},
        {"violations", machine.violations().count()}};
    addCardState(machine, &state);
    addInkState(machine, &state);
    addLoaderState(bridge, &state);
    return state;
}
