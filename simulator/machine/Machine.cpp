#include "Machine.h"

#include <cmath>

namespace
{
constexpr double xAtPowerUp = 312000;
constexpr double yAtPowerUp = 31000;
constexpr double zAtPowerUp = 40000;
constexpr double slowLeveller = 40;
constexpr double shavingSpeed = 100; ///< below this the leveller tears instead of shaving
constexpr double axisTolerance = 0.5;
} // namespace

Machine::Machine(const MachineClock &clock, double encoderResolution)
    : m_clock(clock), m_resolution(encoderResolution), m_x(xAtPowerUp, 400e3, geometry::xAcceleration),
      m_y(yAtPowerUp, geometry::ySpeed, geometry::yAcceleration),
      m_z(zAtPowerUp, geometry::zSpeed, geometry::zAcceleration)
{
}

void Machine::violation(const QString &name, const QString &detail)
{
    m_violations.add(now(), name, detail);
}

Axis *Machine::axis(QChar letter)
{
    switch (letter.toLatin1()) {
    case 'x':
        return &m_x;
    case 'y':
        return &m_y;
    case 'z':
        return &m_z;
    default:
        return nullptr;
    }
}

void Machine::settle()
{
    m_ink.settle();
    settlePage();
}

void Machine::settlePage()
{
    if (!m_active || now() < m_x.timeAt(m_active->lastX))
        return;
    m_active->record.endSeconds = m_x.timeAt(m_active->lastX);
    if (!m_active->record.structure.bytes.empty() || !m_active->record.support.bytes.empty())
        m_partTop = std::max(m_partTop, m_active->record.z);
    const DotCounts dots = m_recorder.addPass(std::move(m_active->record));
    m_active.reset();
    m_complete = true;
    for (int head = 1; head <= geometry::heads; ++head) {
        for (InkMaterial material : {Structure, Support}) {
            if (!m_ink.fire(head, material, double(dots[size_t(head - 1)][material])))
                violation("dry-head", QString("head %1 has no %2 for its drops")
                                          .arg(head)
                                          .arg(material == Support ? "support" : "structure"));
        }
    }
}

// X

int Machine::xCounts() const
{
    return int(std::lround(m_x.position(now()) * countsPerMicrometre()));
}

void Machine::setXSpeed(int millimetresPerSecond)
{
    if (millimetresPerSecond <= 0)
        violation("speed", QString("X speed %1").arg(millimetresPerSecond));
    else
        m_x.setSpeed(millimetresPerSecond * 1000.0);
}

void Machine::moveXTo(double micrometres)
{
    settle();
    if (m_active) {
        violation("page-interrupted", "X is sent elsewhere while a page is being fired");
        m_active.reset();
    }
    updateStack();
    m_recorder.noteMotion('x', m_x.moveTo(micrometres, now()));
}

void Machine::homeX()
{
    moveXTo(geometry::xHome);
    m_xHomed = true;
}

void Machine::moveX(int counts)
{
    const double target = counts / countsPerMicrometre();
    checkHomed(m_xHomed, 'X');
    checkTarget('X', target, geometry::xEnd);
    moveXTo(target);
    checkStack(target);
}

void Machine::sweepX()
{
    settle();
    checkHomed(m_xHomed, 'X');
    if (xMoving())
        violation("sweep-while-moving", QString("X still moves at %1").arg(xCounts()));
    if (yzMoving())
        violation("sweep-while-moving", "Y or Z still moves at the start of a sweep");
    const double from = m_x.position(now());
    const bool back = from > (geometry::sweepNear + geometry::sweepFar) / 2;
    const double to = back ? geometry::sweepNear : geometry::sweepFar;
    moveXTo(to);
    checkStack(geometry::sweepNear);
    passOverPart();
    if (m_heads.armed)
        firePage(from, to);
    else if (m_heads.pageExpected())
        violation("sweep-without-image", "a page is placed, but no picture is armed");
    m_heads.clearPages();
}

// Y and Z

int Machine::yPosition() const
{
    return int(std::lround(m_y.position(now())));
}

int Machine::zPosition() const
{
    return int(std::lround(m_z.position(now())));
}

void Machine::checkHomed(bool homed, char axis)
{
    if (!homed)
        violation("not-homed", QString("%1 is moved before it was homed").arg(axis));
}

void Machine::checkTarget(char axis, double target, double end)
{
    if (target < -axisTolerance || target > end + axisTolerance)
        violation("axis-limit", QString("%1 to %2, its travel is 0 to %3").arg(axis).arg(target).arg(end));
}

void Machine::moveY(int target)
{
    settle();
    checkHomed(m_yHomed, 'Y');
    checkTarget('Y', target, geometry::yEnd);
    if (xMoving())
        violation("y-during-sweep", QString("Y to %1 while X moves at %2").arg(target).arg(xCounts()));
    m_recorder.noteMotion('y', m_y.moveTo(target, now()));
}

void Machine::homeY()
{
    settle();
    if (xMoving())
        violation("y-during-sweep", "Y is homed while X moves");
    m_y.moveTo(0, now());
    m_yHomed = false;
}

void Machine::zeroY()
{
    m_yHomed = m_y.target() == 0;
    if (!m_yHomed)
        violation("not-homed", "Y is zeroed without having been homed");
}

/// Going down takes the part out of everybody's way; going up brings it to the heads.
void Machine::checkZMove(double target)
{
    if (m_active && target != m_z.target())
        violation("z-during-page", QString("Z to %1 while a page is being fired").arg(target));
    const double lift = m_partTop - target;
    if (lift <= geometry::liftLimit + axisTolerance)
        return;
    violation("part-into-heads",
              QString("Z to %1 lifts the part %2 um above the plane").arg(target).arg(lift));
    m_partTop = target;
}

void Machine::moveZ(int target)
{
    settle();
    checkHomed(m_zHomed, 'Z');
    checkTarget('Z', target, geometry::zEnd);
    checkZMove(target);
    m_recorder.noteMotion('z', m_z.moveTo(target, now()));
}

void Machine::homeZ()
{
    settle();
    checkZMove(0);
    m_z.moveTo(0, now());
    m_zHomed = true;
}

// Leveller and ink stack

void Machine::setLevellerSpeed(int speed)
{
    m_levellerSetting = speed;
    const double reached = m_levellerSlow ? std::min<double>(speed, slowLeveller) : speed;
    m_climate.leveller().setTarget(reached, now());
}

int Machine::levellerSpeed()
{
    return int(std::lround(m_climate.reading(m_climate.leveller(), now())));
}

void Machine::setLevellerSlow(bool slow)
{
    m_levellerSlow = slow;
    setLevellerSpeed(m_levellerSetting);
}

/// The carriage passes over the part: what stands above the plane is shaved, if the leveller turns.
void Machine::passOverPart()
{
    const double lift = m_partTop - m_z.position(now());
    if (lift <= axisTolerance)
        return;
    if (std::fabs(m_climate.leveller().real(now())) < shavingSpeed)
        violation("leveller-stands", QString("%1 um to shave and the leveller does not turn").arg(lift));
    m_partTop = m_z.position(now());
}

void Machine::setMagnet(bool on)
{
    m_magnet = on;
    updateStack();
}

void Machine::setStackStuck(StackStuck stuck)
{
    m_stackStuck = stuck;
    updateStack();
}

/// The magnet takes the stack at its station and leaves it there.
void Machine::updateStack()
{
    const StackStuck against = m_magnet ? StackStuck::Parked : StackStuck::Carriage;
    if (std::fabs(m_x.position(now()) - geometry::inkStation) <= geometry::inkStationReach &&
        m_stackStuck != against)
        m_stackCoupled = m_magnet;
}

void Machine::checkStack(double target)
{
    if (m_stackCoupled && target < geometry::sweepFar - axisTolerance)
        violation("stack-over-part", QString("X to %1 with the ink stack on the carriage").arg(target));
}

bool Machine::containerUnderHeads() const
{
    return !m_stackCoupled && std::fabs(m_z.position(now()) - geometry::containerZ) <= geometry::pressReach;
}

bool Machine::stackUnderHeads() const
{
    return m_stackCoupled && std::fabs(m_x.position(now()) - geometry::pressX) <= geometry::pressReach &&
           std::fabs(m_z.position(now()) - geometry::pressZ) <= geometry::pressReach;
}
