#include "remote/RemoteCall.h"
#include "remote/RemoteCommands.h"

void injectCommand(const RemoteCall &) {}

void waveFormCommand(const RemoteCall &) {}
