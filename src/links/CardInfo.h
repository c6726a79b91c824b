#pragma once
// A bottle's record as its card tells it. All zero: no card was read.

#include <QString>

struct CardInfo {
    char type[12] = {};      ///< material code, for example "MTJ7401"
    quint32 weight = 0;      ///< grams when full
    char sn[16] = {};        ///< serial number
    quint32 date = 0;        ///< expiry as the number yyyyMMdd; its low byte always reads 0
    quint32 rest_weight = 0; ///< grams left
};

/// A card fills its fields without an end mark when they are full.
template <int size> QString cardText(const char (&field)[size])
{
    return QString::fromLatin1(field, int(qstrnlen(field, size)));
}
