#include "remote/RemoteCall.h"
#include "remote/RemoteCommands.h"

void printFileInfoCommand(const RemoteCall &) {}

void fileListCommand(const RemoteCall &) {}

void fileListCntCommand(const RemoteCall &) {}

void sqlCommand(const RemoteCall &) {}
