#pragma once
// The daily mail: what is left in the bottles and which events are active.

#include <QString>
#include <QTime>
#include <array>
#include <functional>

/// Grams left in the four bottles, in table order: the two of support, the two of structure.
using RestWeights = std::array<quint32, 4>;

/// Sends at half past eleven local time, once however often it is asked in that minute. Background service.
class StatusMail
{
public:
    /// Both functions are called on the thread that calls pass().
    explicit StatusMail(std::function<RestWeights()> restWeights,
                        std::function<QTime()> clock = &QTime::currentTime);

    /// Called with every pass of supervision. Blocks for as long as the tool takes, once a day.
    void pass();

private:
    bool isTime() const;
    QString body() const;

    const std::function<RestWeights()> m_restWeights;
    const std::function<QTime()> m_clock;
    bool m_armed = true; ///< today's mail is still to come
};
