#include "remote/RemoteCall.h"
#include "remote/RemoteCommands.h"

void deviceCommand(const RemoteCall &) {}
