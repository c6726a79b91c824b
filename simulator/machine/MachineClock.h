#pragma once
// The one clock of the machine, in seconds of machine time since its start.

#include <chrono>

class MachineClock
{
public:
    virtual ~MachineClock() = default;
    virtual double now() const = 0;
    /// Seconds since the start on a real clock; only what is measured of the program goes by it.
    virtual double wall() const = 0;
    virtual double scale() const { return 1; }
};

/// Wall time times a scale.
class ScaledClock : public MachineClock
{
public:
    explicit ScaledClock(double scale) : m_scale(scale) {}
    double now() const override { return wall() * m_scale; }
    double wall() const override
    {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - m_start).count();
    }
    double scale() const override { return m_scale; }

private:
    double m_scale;
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};
