#pragma once
// How the pages word a duration.

#include <QString>

/// "hh:mm"; the hours go on beyond a day.
inline QString hoursAndMinutes(int seconds)
{
    const int minutes = qMax(0, seconds) / 60;
    return QStringLiteral("%1:%2")
        .arg(minutes / 60, 2, 10, QLatin1Char('0'))
        .arg(minutes % 60, 2, 10, QLatin1Char('0'));
}
