#include "remote/RemoteCall.h"
#include "remote/RemoteCommands.h"

void machineCommand(const RemoteCall &) {}

void heartBeatCommand(const RemoteCall &) {}

void materialBoxCommand(const RemoteCall &) {}
