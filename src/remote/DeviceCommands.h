#pragma once
// Commands of the "Device" title that have a file of their own. Link thread.

class RemoteCall;

void testPrintCommand(const RemoteCall &call);
void dropMassCommand(const RemoteCall &call);
void supportCommand(const RemoteCall &call);
