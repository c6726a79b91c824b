#include "Bridge.h"
#include "CommandWords.h"
#include "Commands.h"

#include <QJsonArray>

using words::badArguments;

namespace
{
QString firmware(CommandContext &context, const QStringList &a, QJsonObject *)
{
    for (const auto &board : context.bridge.boards()) {
        if (QString::number(board->number()) != a[0])
            continue;
        bool number = false;
        const int value = a.value(2).toInt(&number);
        Bootloader &loader = board->loader();
        if (a.value(1) == "off")
            loader.refusedStep = loader.lostBlock = 0;
        else if (a.value(1) == "refuse" && number && Bootloader::isLoaderCommand(value))
            loader.refusedStep = value;
        else if (a.value(1) == "lose" && number && value > 0)
            loader.lostBlock = value;
        else
            return badArguments;
        return {};
    }
    return "no board " + a[0];
}
} // namespace

std::vector<Command> loaderCommands()
{
    return {
        {"firmware", "BOARD refuse|lose|off NUMBER",
         "The boot loader refuses step NUMBER (2 enter, 3 arm, 4 block, 5 finish), or loses block NUMBER.",
         true, firmware}};
}

void addLoaderState(Bridge &bridge, QJsonObject *state)
{
    QJsonArray boards;
    for (const auto &board : bridge.boards()) {
        const Bootloader &loader = board->loader();
        boards.append(QJsonObject{{"board", board->number()},
                                  {"mode", loader.active() ? "loader" : "running"},
                                  {"updates", loader.updates()},
                                  {"bytes", int(loader.image().size())}});
    }
    (*state)["boards"] = boards;
}
