#include "Axis.h"

#include <algorithm>
#include <cmath>
#include <limits>

double Axis::distance() const
{
    return std::fabs(m_to - m_from);
}

/// Up and down with the acceleration, cruise at the peak between.
double Axis::duration() const
{
    return distance() > 0 ? distance() / m_peak + m_peak / m_acceleration : 0;
}

double Axis::effective(double now) const
{
    return m_stuck ? std::min(now, m_stuckAt) : now;
}

double Axis::moveTo(double target, double now)
{
    m_from = position(now);
    m_to = target;
    m_start = now;
    if (m_stuck)
        m_stuckAt = now;
    m_peak = std::max(1.0, std::min(m_speed, std::sqrt(distance() * m_acceleration)));
    return duration();
}

void Axis::setPosition(double position)
{
    m_from = m_to = position;
}

double Axis::position(double now) const
{
    const double t = effective(now) - m_start;
    const double total = duration();
    if (t >= total)
        return m_to;
    const double ramp = m_peak / m_acceleration;
    double way = 0;
    if (t <= 0)
        way = 0;
    else if (t < ramp)
        way = m_acceleration * t * t / 2;
    else if (t < total - ramp)
        way = m_peak * (t - ramp / 2);
    else
        way = distance() - m_acceleration * (total - t) * (total - t) / 2;
    return m_from + (m_to > m_from ? way : -way);
}

bool Axis::moving(double now) const
{
    return effective(now) < m_start + duration();
}

double Axis::timeAt(double position) const
{
    const double way = m_to > m_from ? position - m_from : m_from - position;
    const double whole = distance();
    if (way < 0 || way > whole || (m_stuck && m_stuckAt < m_start + duration()))
        return std::numeric_limits<double>::infinity();
    const double rampWay = m_peak * m_peak / m_acceleration / 2;
    if (way <= rampWay)
        return m_start + std::sqrt(2 * way / m_acceleration);
    if (way <= whole - rampWay)
        return m_start + m_peak / m_acceleration + (way - rampWay) / m_peak;
    return m_start + duration() - std::sqrt(2 * (whole - way) / m_acceleration);
}

bool Axis::cruisesAt(double position) const
{
    const double rampWay = m_peak * m_peak / m_acceleration / 2;
    const double way = m_to > m_from ? position - m_from : m_from - position;
    return way >= rampWay && way <= distance() - rampWay;
}

void Axis::setStuck(bool stuck, double now)
{
    if (stuck == m_stuck)
        return;
    if (!stuck && moving(now))
        m_start += now - m_stuckAt;
    m_stuck = stuck;
    m_stuckAt = now;
}
