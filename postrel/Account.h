#pragma once
// The mail account as the machine's settings file holds it.

#include <QString>
#include <QStringList>

struct Account {
    QString host;
    int port = 0;
    bool sslOnConnect = false;
    QString from;     ///< also the user of the login
    QString password; ///< empty: no login
    QStringList recipients;

    QString place() const { return QStringLiteral("%1:%2").arg(host).arg(port); }
};

/// Reads the file; throws a Failure when something that a mail needs is not in it.
Account readAccount(const QString &path);
