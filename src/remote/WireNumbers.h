#pragma once
// Numbers that a client sends, whatever it writes there.

#include <QJsonValue>
#include <algorithm>
#include <limits>

/// What is no number reads as 0, what T cannot hold as the nearest that it can; a fraction is cut off where T
/// has none.
template <class T> T wireNumber(const QJsonValue &value)
{
    const double number = value.toDouble();
    if (!(number == number))
        return T(0);
    return T(
        std::clamp(number, double(std::numeric_limits<T>::lowest()), double(std::numeric_limits<T>::max())));
}
