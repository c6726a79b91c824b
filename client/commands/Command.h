#pragma once
// The commands of peloractl as data: help, completion and dispatch read the same table.

#include "commands/Arguments.h"

#include <QVector>

class Session;

struct Command {
    const char *name;
    const char *arguments; ///< as the help shows them
    const char *summary;   ///< one line
    const char *details;   ///< what is worth knowing; may be empty
    QVector<const char *> examples;
    QVector<Option> options; ///< besides those of every command
    int least, most;         ///< words after the name; most -1: any number
    void (*run)(Session &session);
    const char *choices = ""; ///< what the first word can be, for completion
    const char *further = ""; ///< what the second word can be
    bool takesFiles = false;  ///< completion offers files
    int timeoutS = 10;        ///< usual patience; --timeout overrides it
};

// Each family's rows, in its own file.
QVector<Command> machineCommands();
QVector<Command> uploadCommands();
QVector<Command> queueCommands();
QVector<Command> databaseCommands();
QVector<Command> parameterCommands();
QVector<Command> temperatureCommands();
QVector<Command> backupCommands();
QVector<Command> benchCommands();
QVector<Command> jetCommands();

/// All rows in the order of the help.
const QVector<Command> &allCommands();
/// Null when there is none of that name.
const Command *findCommand(const QString &name);
/// The options of every command.
const QVector<Option> &commonOptions();

extern const Option yesOption;
extern const Option forceOption;
