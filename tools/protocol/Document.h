#pragma once
// The recorded exchanges in a document: between the lines "<!-- recorded NAME -->" and "<!-- end -->".

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

struct Exchange {
    QString name;
    QString request;
    QString reply;
};

/// JSON on as few lines as are readable; any other text as it stands.
QString textOf(const QByteArray &payload);
/// Bytes in hexadecimal and as characters, sixteen a line.
QString dumpOf(const QByteArray &bytes);

/// The document with every recorded place filled. Names that have no place, or no exchange, go to `errors`.
QString withExchanges(const QString &document, const QVector<Exchange> &exchanges, QStringList *errors);
