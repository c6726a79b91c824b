#include "Commands.h"

#include "Machine.h"

std::vector<Command> cardCommands()
{
    return {};
}

void addCardState(Machine &, QJsonObject *) {}
