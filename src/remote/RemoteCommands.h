#pragma once
// Every command of the remote protocol by its title. A family has a file of its own. Link thread.

#include <QVector>

class RemoteCall;

struct RemoteCommand {
    const char *title;
    void (*run)(const RemoteCall &call);
};

/// The titles in the order in which they are tested.
const QVector<RemoteCommand> &remoteCommands();

// StatusCommands.cpp
void machineCommand(const RemoteCall &call);
void heartBeatCommand(const RemoteCall &call);
void materialBoxCommand(const RemoteCall &call);
// ParameterFiles.cpp
void parameterFileCommand(const RemoteCall &call);
// JetCommands.cpp
void injectCommand(const RemoteCall &call);
void waveFormCommand(const RemoteCall &call);
// DeviceCommands.cpp
void deviceCommand(const RemoteCall &call);
// QueueCommands.cpp
void printQueueCommand(const RemoteCall &call);
void fileListSortCommand(const RemoteCall &call);
void fileDeleteCommand(const RemoteCall &call);
void fileListReprintCommand(const RemoteCall &call);
// ListCommands.cpp
void printFileInfoCommand(const RemoteCall &call);
void fileListCommand(const RemoteCall &call);
void fileListCntCommand(const RemoteCall &call);
void sqlCommand(const RemoteCall &call);
