#pragma once
// The one physical model. Boards, head boards and faults are views on it; all of them run on one thread, and
// every call that depends on time first lets the model catch up to the present.

#include "Axis.h"
#include "Climate.h"
#include "HeadArray.h"
#include "InkPath.h"
#include "MachineClock.h"
#include "PartRecorder.h"
#include "Violations.h"
#include "cards/BottleRack.h"
#include "common/Geometry.h"

#include <functional>
#include <optional>

class Machine
{
public:
    /// `encoderResolution`: counts per inch of the fitted encoder, 25400 or 1200.
    explicit Machine(const MachineClock &clock, double encoderResolution = 25400.0);

    double now() const { return m_clock.now(); }
    const MachineClock &clock() const { return m_clock; }
    void violation(const QString &name, const QString &detail);

    // Axes, in the boards' own units: X in encoder counts, Y and Z in micrometres.
    void homeX();
    void moveX(int counts);
    void sweepX();
    void setXSpeed(int millimetresPerSecond);
    void moveY(int target);
    void homeY();
    /// The Y counter starts at 0 where the homing has stopped.
    void zeroY();
    void moveZ(int target);
    void homeZ();
    bool xMoving() const { return m_x.moving(now()); }
    bool yzMoving() const { return m_y.moving(now()) || m_z.moving(now()); }
    int xCounts() const;
    int yPosition() const;
    int zPosition() const;
    /// Null for a letter other than x, y, z.
    Axis *axis(QChar letter);

    // Leveller, ink stack, doors, platform.
    void setLevellerSpeed(int speed);
    int levellerSpeed();
    int levellerSetting() const { return m_levellerSetting; }
    /// A slow leveller turns, but never reaches a speed that could shave.
    void setLevellerSlow(bool slow);
    void setMagnet(bool on);
    bool magnet() const { return m_magnet; }
    bool stackCoupled() const { return m_stackCoupled; }
    /// Coupled, and carriage and bed where ink is pressed.
    bool stackUnderHeads() const;
    /// The bed stands where a person puts a container, and the stack is not in between.
    bool containerUnderHeads() const;
    /// Parked: the magnet does not take it. Carriage: it does not let go.
    enum class StackStuck { No, Parked, Carriage };
    void setStackStuck(StackStuck stuck);
    StackStuck stackStuck() const { return m_stackStuck; }
    bool inkDoorClosed = true;
    bool frontDoorClosed = true;
    bool platformSeated = true;
    /// Takes the part away.
    void emptyPlatform() { m_partTop = 0; }
    double partTop() const { return m_partTop; }

    // Head boards.
    HeadArray &headArray() { return m_heads; }
    void presetEncoder(int value);
    int encoderPosition() const;
    void arm(Picture picture);
    /// Whether the armed page has been fired and its boards say so.
    bool transferComplete();
    /// Machine time when the page in work will have been fired; infinite when none is.
    double completionTime() const;
    bool holdTransfer = false;

    BottleRack &bottles() { return m_bottles; }
    InkPath &ink() { return m_ink; }
    Climate &climate() { return m_climate; }
    const Violations &violations() const { return m_violations; }
    PartRecorder &recorder() { return m_recorder; }
    const PartRecorder &recorder() const { return m_recorder; }
    /// Lets what has happened since the last call take effect.
    void settle();

private:
    struct ActivePass {
        PassRecord record;
        double lastX = 0; ///< where the carriage fires the last column of the last head
    };

    double countsPerMicrometre() const { return m_resolution / geometry::micrometresPerInch; }
    void moveXTo(double micrometres);
    void checkTarget(char axis, double target, double end);
    void checkHomed(bool homed, char axis);
    void checkZMove(double target);
    void checkSweep();
    void firePage(double from, double to);
    bool placeHead(int head, int direction, double pitch, PassRecord *pass, double *lastX);
    void checkHeads(const Picture &picture);
    void passOverPart();
    void updateStack();
    void checkStack(double target);
    void settlePage();

    const MachineClock &m_clock;
    double m_resolution;
    Axis m_x;
    Axis m_y;
    Axis m_z;
    bool m_xHomed = false;
    bool m_yHomed = false;
    bool m_zHomed = false;
    int m_levellerSetting = 0;
    bool m_levellerSlow = false;
    bool m_magnet = false;
    bool m_stackCoupled = false;
    StackStuck m_stackStuck = StackStuck::No;
    double m_partTop = 0; ///< height of the part above the bed, in the measure of Z
    double m_presetX = geometry::xHome;
    int m_presetValue = 0;
    HeadArray m_heads;
    BottleRack m_bottles;
    InkPath m_ink{*this};
    Climate m_climate;
    Violations m_violations;
    PartRecorder m_recorder;
    std::optional<ActivePass> m_active;
    bool m_complete = false;
};
