#pragma once
// One axis: where it is follows from the time alone (a trapezoid of speed over time), so nothing has to tick
// and a busy computer cannot make it late.

class Axis
{
public:
    Axis(double position, double speed, double acceleration)
        : m_from(position), m_to(position), m_speed(speed), m_acceleration(acceleration), m_peak(speed)
    {
    }

    /// In micrometres a second; holds from the next move on.
    void setSpeed(double speed) { m_speed = speed; }
    double speed() const { return m_speed; }
    /// Leaves from where the axis is. Returns the seconds that the move takes.
    double moveTo(double target, double now);
    /// Names the place where the axis rests (after homing).
    void setPosition(double position);

    double position(double now) const;
    bool moving(double now) const;
    double target() const { return m_to; }
    double start() const { return m_start; }
    /// When the present move passes a place; never is infinite.
    double timeAt(double position) const;
    /// Whether the present move passes a place at its full speed.
    bool cruisesAt(double position) const;
    /// Top speed of the present move.
    double peakSpeed() const { return m_peak; }

    /// A stuck axis stands still and reports that it moves; released, it ends its move.
    void setStuck(bool stuck, double now);
    bool stuck() const { return m_stuck; }

private:
    double distance() const;
    double duration() const;
    double effective(double now) const;

    double m_from;
    double m_to;
    double m_speed;
    double m_acceleration;
    double m_peak;
    double m_start = -1e9;
    bool m_stuck = false;
    double m_stuckAt = 0;
};
