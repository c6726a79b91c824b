#pragma once
// A mail as it goes over the wire: RFC 5322 headers, a UTF-8 plain text.

#include <QByteArray>
#include <QString>
#include <QStringList>

struct MailText {
    QString from;
    QStringList to;
    QString subject;
    QString body;
};

/// With CRLF line ends and no line above 78 characters (a longer address apart). Date and id are made here.
QByteArray mailMessage(const MailText &mail);
