#include "Commands.h"

#include "Machine.h"

std::vector<Command> inkCommands()
{
    return {};
}

void addInkState(Machine &, QJsonObject *) {}
