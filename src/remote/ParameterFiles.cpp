#include "remote/RemoteCall.h"
#include "remote/RemoteCommands.h"

void parameterFileCommand(const RemoteCall &) {}
