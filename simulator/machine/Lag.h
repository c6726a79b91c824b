#pragma once
// A quantity that follows its set-point with one time constant: temperatures, pressures, the leveller's
// speed.

#include <algorithm>
#include <cmath>
#include <limits>

class Lag
{
public:
    explicit Lag(double value = 0, double timeConstant = 1)
        : m_from(value), m_target(value), m_tau(timeConstant)
    {
    }

    void setTarget(double target, double now)
    {
        if (target == m_target)
            return;
        m_from = real(now);
        m_target = target;
        m_since = now;
    }
    double target() const { return m_target; }
    /// Something moves it at once; from there it follows its set-point again.
    void push(double value, double now)
    {
        m_from = value;
        m_since = now;
    }
    /// It never comes below this, whatever is set.
    void setLowest(double lowest, double now)
    {
        push(real(now), now);
        m_lowest = lowest;
    }
    /// As it is.
    double real(double now) const
    {
        const double aim = std::max(m_target, m_lowest);
        return aim + (m_from - aim) * std::exp(-(now - m_since) / m_tau);
    }
    /// As its sensor tells: drifted, or frozen at one value.
    double reading(double now) const { return (m_frozen ? m_frozenAt : real(now)) + m_drift; }

    void setDrift(double drift) { m_drift = drift; }
    void setFrozen(bool frozen, double now)
    {
        m_frozen = frozen;
        m_frozenAt = real(now);
    }

private:
    double m_from;
    double m_target;
    double m_lowest = -std::numeric_limits<double>::infinity();
    double m_tau;
    double m_since = 0;
    double m_drift = 0;
    bool m_frozen = false;
    double m_frozenAt = 0;
};
