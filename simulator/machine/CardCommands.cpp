#include "CommandWords.h"
#include "Commands.h"
#include "Machine.h"

#include <QJsonArray>

using words::badArguments;

namespace
{
constexpr double mostGrams = 100000; ///< of a bottle, or of what a card may say
constexpr int mostRefusedWrites = 1000;
constexpr int longestSerial = 15;

struct FaultWord {
    const char *name;
    CardFault fault;
};
constexpr FaultWord faultWords[] = {
    {"off", CardFault::None},
    {"wrong-key", CardFault::WrongKey},
    {"wrong-place", CardFault::WrongPlace},
    {"unreadable", CardFault::Unreadable},
    {"missing", CardFault::Missing},
    {"write-fail", CardFault::WriteFail},
    {"pull-on-write", CardFault::PullOnWrite},
};

bool readPosition(const QString &word, int *position)
{
    bool number = false;
    *position = word.toInt(&number);
    return number && BottleRack::exists(*position);
}

bool readGrams(const QString &word, double *grams)
{
    return words::readAmount(word, grams) && *grams <= mostGrams;
}

QString bottle(CommandContext &context, const QStringList &a, QJsonObject *)
{
    int position = 0;
    bool put = false;
    if (!readPosition(a[0], &position) || !words::readSwitch(a.value(1), "put", "pull", &put))
        return badArguments;
    context.machine.settle(); // what has flowed so far came out of this bottle
    BottleRack &rack = context.machine.bottles();
    put ? rack.put(position) : rack.pull(position);
    return {};
}

QString bottleNew(CommandContext &context, const QStringList &a, QJsonObject *)
{
    int position = 0;
    double grams = 0;
    if (!readPosition(a[0], &position) || !readGrams(a.value(1), &grams) || a.value(2).size() > longestSerial)
        return badArguments;
    context.machine.settle();
    context.machine.bottles().exchange(position, grams, a.value(2).toStdString());
    return {};
}

QString bottleGrams(CommandContext &context, const QStringList &a, QJsonObject *)
{
    int position = 0;
    double grams = 0;
    if (!readPosition(a[0], &position) || !readGrams(a.value(1), &grams))
        return badArguments;
    context.machine.settle();
    context.machine.bottles().at(position).grams = grams;
    return {};
}

QString cardRest(CommandContext &context, const QStringList &a, QJsonObject *)
{
    int position = 0;
    double grams = 0;
    if (!readPosition(a[0], &position) || !readGrams(a.value(1), &grams))
        return badArguments;
    context.machine.bottles().at(position).card.rest = uint32_t(grams);
    return {};
}

QString card(CommandContext &context, const QStringList &a, QJsonObject *)
{
    int position = 0;
    if (!readPosition(a[0], &position))
        return badArguments;
    for (const FaultWord &word : faultWords) {
        if (a.value(1) != QLatin1String(word.name))
            continue;
        const int count = a.value(2).toInt();
        if (word.fault == CardFault::WriteFail && (count < 1 || count > mostRefusedWrites))
            return badArguments;
        context.machine.bottles().setFault(position, word.fault, count);
        return {};
    }
    return badArguments;
}

QString faultName(CardFault fault)
{
    for (const FaultWord &word : faultWords) {
        if (word.fault == fault && fault != CardFault::None)
            return word.name;
    }
    return {};
}
} // namespace

std::vector<Command> cardCommands()
{
    return {
        {"bottle", "POSITION pull|put", "Takes a bottle (1 to 4) out of its place or puts it back.", false,
         bottle},
        {"bottle-new", "POSITION GRAMS [SN]",
         "A fresh bottle with a fresh card, as an operator exchanges it.", false, bottleNew},
        {"bottle-grams", "POSITION GRAMS", "Sets the wax that is really in a bottle.", false, bottleGrams},
        {"card-rest", "POSITION GRAMS", "Sets the rest that a bottle's card tells.", false, cardRest},
        {"card", "POSITION wrong-key|wrong-place|unreadable|missing|write-fail|pull-on-write|off [COUNT]",
         "A bottle's card is foreign, of the other material, damaged, lost; refuses COUNT writes; or is "
         "pulled "
         "as it is written.",
         true, card},
    };
}

void addCardState(Machine &machine, QJsonObject *state)
{
    QJsonArray bottles;
    for (int position = 1; position <= BottleRack::positions; ++position) {
        const Bottle &bottle = machine.bottles().at(position);
        bottles.append(QJsonObject{{"position", position},
                                   {"present", bottle.present},
                                   {"grams", bottle.grams},
                                   {"type", QString::fromStdString(bottle.card.type)},
                                   {"sn", QString::fromStdString(bottle.card.sn)},
                                   {"weight", double(bottle.card.weight)},
                                   {"rest", double(bottle.card.rest)},
                                   {"date", double(bottle.card.date)},
                                   {"fault", faultName(bottle.fault)}});
    }
    (*state)["bottles"] = bottles;
}
