#pragma once
// Who may connect, out of config/Platform.json; without its keys everybody, from everywhere. Any thread.

#include <QHostAddress>

/// "RemoteListen". A wrong text is logged and gives a null address, on which nobody can listen.
QHostAddress remoteListenAddress();
/// Whether one of "RemoteAllow", addresses or networks like "192.168.1.0/24", holds `peer`. A wrong entry is
/// logged and holds nobody.
bool mayConnect(const QHostAddress &peer);
