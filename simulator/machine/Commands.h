#pragma once
// What the machine can be told from outside: reading its state, working its doors, and the named faults. One
// table: name, arguments, help, action; `machinectl help` prints it.

#include <QJsonObject>
#include <QStringList>
#include <functional>
#include <vector>

class Machine;
class Bridge;
class FaultRegister;
struct Site;

struct CommandContext {
    Machine &machine;
    Bridge &bridge;
    const Site &site;
    /// Writes the report (and pictures) now; an empty path means the usual one. Null on success, else what is
    /// wrong.
    std::function<QString(const QString &path)> report;
    std::function<void()> stop;
    /// Sum of the sleeps that are stated for one gap between two sweeps.
    std::function<void(double milliseconds)> setStatedSleep;
    /// Told of every fault command; may be null.
    FaultRegister *faults = nullptr;
    /// Saves a picture of the panel. Null on success, else what is wrong.
    std::function<QString(const QString &path)> picture = {};
};

struct Command {
    const char *name;
    const char *arguments;
    const char *help;
    bool fault;
    /// Fills the answer; returns what is wrong, empty when all is well.
    QString (*run)(CommandContext &context, const QStringList &arguments, QJsonObject *answer);
};

const std::vector<Command> &commands();
/// Bottles and cards, CardCommands.cpp.
std::vector<Command> cardCommands();
/// Ink path and ink stack, InkCommands.cpp.
std::vector<Command> inkCommands();
/// Boot loaders, LoaderCommands.cpp.
std::vector<Command> loaderCommands();
/// {"ok":true,...} or {"ok":false,"error":"..."}.
QJsonObject runCommand(CommandContext &context, const QStringList &words);
/// Their sections of the state.
void addCardState(Machine &machine, QJsonObject *state);
void addInkState(Machine &machine, QJsonObject *state);
void addLoaderState(Bridge &bridge, QJsonObject *state);
QJsonObject stateOf(Machine &machine, Bridge &bridge);
