#pragma once
// A bottle's record as its card tells it.

#include <QByteArray>

struct CardInfo {
    QByteArray type;         ///< material code; empty: no card was read
    quint32 weight = 0;      ///< grams when full
    QByteArray sn;           ///< serial number
    QByteArray date;         ///< expiry, digits
    quint32 rest_weight = 0; ///< grams left
};
