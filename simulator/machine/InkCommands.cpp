#include "CommandWords.h"
#include "Commands.h"
#include "Machine.h"

#include <QJsonArray>
#include <limits>

using words::badArguments;

namespace
{
constexpr double leakingPressure = -300; ///< above what cleaning waits for, -450

struct StuckWord {
    const char *command;
    const char *state;
    Machine::StackStuck stuck;
};
constexpr StuckWord stuckWords[] = {{"parked", "parked", Machine::StackStuck::Parked},
                                    {"carriage", "carriage", Machine::StackStuck::Carriage},
                                    {"free", "no", Machine::StackStuck::No}};

QString stack(CommandContext &context, const QStringList &a, QJsonObject *)
{
    for (const StuckWord &word : stuckWords) {
        if (a[0] != word.command)
            continue;
        context.machine.setStackStuck(word.stuck);
        return {};
    }
    return badArguments;
}

QString feedFail(CommandContext &context, const QStringList &a, QJsonObject *)
{
    InkMaterial material;
    bool number = false;
    const int count = a.value(1).toInt(&number);
    if (!words::readMaterial(a[0], &material) || !number || count < 0)
        return badArguments;
    context.machine.ink().failFeeds(material, count);
    return {};
}

QString island(CommandContext &context, const QStringList &a, QJsonObject *)
{
    InkMaterial material;
    double grams = 0;
    if (!words::readMaterial(a[0], &material) || !words::readAmount(a.value(1), &grams))
        return badArguments;
    context.machine.ink().setIsland(material, grams);
    return {};
}

/// HEAD MATERIAL AMOUNT, for a tank by its wax and by its level.
template <typename Set> QString setTank(const QStringList &a, Set set)
{
    int head = 0;
    InkMaterial material;
    double amount = 0;
    if (!words::readHead(a[0], &head) || !words::readMaterial(a.value(1), &material) ||
        !words::readAmount(a.value(2), &amount))
        return badArguments;
    set(head, material, amount);
    return {};
}

QString tank(CommandContext &context, const QStringList &a, QJsonObject *)
{
    return setTank(a, [&](int head, InkMaterial material, double grams) {
        context.machine.ink().setTank(head, material, grams);
    });
}

QString level(CommandContext &context, const QStringList &a, QJsonObject *)
{
    return setTank(a, [&](int head, InkMaterial material, double value) {
        context.machine.ink().setTank(head, material, value / InkPath::levelPerGram);
    });
}

QString vacuum(CommandContext &context, const QStringList &a, QJsonObject *)
{
    int head = 0;
    InkMaterial material;
    bool leaks = false;
    if (!words::readHead(a[0], &head) || !words::readMaterial(a.value(1), &material) ||
        !words::readSwitch(a.value(2), "leak", "tight", &leaks))
        return badArguments;
    context.machine.climate()
        .holdPressure(material, head)
        .setLowest(leaks ? leakingPressure : -std::numeric_limits<double>::infinity(), context.machine.now());
    return {};
}

QString press(CommandContext &context, const QStringList &a, QJsonObject *)
{
    int head = 0;
    bool gushing = false;
    if (!words::readHead(a[0], &head) || !words::readSwitch(a.value(1), "gushing", "normal", &gushing))
        return badArguments;
    context.machine.ink().setGushing(head, gushing);
    return {};
}

QJsonObject stackState(const Machine &machine)
{
    QJsonObject state{{"coupled", machine.stackCoupled()}, {"magnet", machine.magnet()}};
    for (const StuckWord &word : stuckWords) {
        if (word.stuck == machine.stackStuck())
            state["stuck"] = word.state;
    }
    return state;
}

/// One figure of both materials.
template <typename Value> QJsonObject both(Value value)
{
    return {{"support", value(Support)}, {"structure", value(Structure)}};
}
} // namespace

std::vector<Command> inkCommands()
{
    return {
        {"stack", "parked|carriage|free",
         "The ink stack sticks in its station, or on the carriage once it is there.", true, stack},
        {"feed-fail", "support|structure COUNT",
         "The next COUNT feeds from a bottle to the valve island fail; nothing flows.", true, feedFail},
        {"island", "support|structure GRAMS", "Sets the wax in a valve island (wants more below 70).", true,
         island},
        {"tank", "HEAD support|structure GRAMS", "Sets the wax in a head's tank (full: 20).", true, tank},
        {"level", "HEAD structure|support VALUE", "Sets the level of a head's tank (full: 61000).", true,
         level},
        {"vacuum", "HEAD support|structure leak|tight", "The head's hold pressure never comes below -300.",
         true, vacuum},
        {"press", "HEAD gushing|normal", "Pressing takes ten times the wax from the head's tanks.", true,
         press},
    };
}

void addInkState(Machine &machine, QJsonObject *state)
{
    const InkPath &ink = machine.ink();
    const auto total = [&](double InkTotals::*member) {
        return both([&](InkMaterial material) { return ink.totals(material).*member; });
    };
    (*state)["ink"] = QJsonObject{
        {"islands", both([&](InkMaterial material) {
             return QJsonObject{{"grams", ink.island(material)},
                                {"demand", ink.demands(material)},
                                {"busy", ink.busy(material)}};
         })},
        {"fed", total(&InkTotals::fed)},
        {"nozzleFed", total(&InkTotals::nozzleFed)},
        {"printed", total(&InkTotals::printed)},
        {"pressed", total(&InkTotals::pressed)},
        {"failedFeeds", both([&](InkMaterial material) { return ink.totals(material).failedFeeds; })}};
    (*state)["stack"] = stackState(machine);
    QJsonArray heads = (*state)["heads"].toArray();
    for (int head = 1; head <= heads.size(); ++head) {
        QJsonObject one = heads[head - 1].toObject();
        one["support"] = ink.level(head, Support);
        one["structure"] = ink.level(head, Structure);
        one["supportGrams"] = ink.tank(head, Support);
        one["structureGrams"] = ink.tank(head, Structure);
        heads[head - 1] = one;
    }
    (*state)["heads"] = heads;
}
