#include "remote/RemoteCall.h"
#include "remote/RemoteCommands.h"

void printQueueCommand(const RemoteCall &) {}

void fileListSortCommand(const RemoteCall &) {}

void fileDeleteCommand(const RemoteCall &) {}

void fileListReprintCommand(const RemoteCall &) {}
