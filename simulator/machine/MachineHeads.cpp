// The part of the machine where carriage and head boards meet: the encoder, and what a sweep fires.

#include "Machine.h"

#include <cmath>
#include <limits>

namespace
{
constexpr double coldestPrinting = 50; ///< below this the wax is solid
constexpr double coolerThanSet = 6;    ///< the program's own band is 5
} // namespace

void Machine::presetEncoder(int value)
{
    m_presetX = m_x.position(now());
    m_presetValue = value;
    if (xMoving())
        violation("encoder-preset", "the encoder is preset while X moves");
}

int Machine::encoderPosition() const
{
    return int(std::lround((m_x.position(now()) - m_presetX) * countsPerMicrometre())) + m_presetValue;
}

void Machine::arm(Picture picture)
{
    settle();
    if (m_active)
        violation("armed-twice", "a picture is armed while the page before is still being fired");
    if (!m_heads.clock.set)
        violation("no-dot-clock", "a picture is armed before the dot clock was set");
    else if (picture.dpi != m_heads.clock.dpi)
        violation("dpi",
                  QString("picture of %1 dpi, dot clock of %2").arg(picture.dpi).arg(m_heads.clock.dpi));
    m_heads.armed = std::move(picture);
    m_complete = false;
}

bool Machine::transferComplete()
{
    settle();
    return m_complete && !holdTransfer;
}

double Machine::completionTime() const
{
    return m_active ? m_x.timeAt(m_active->lastX) : std::numeric_limits<double>::infinity();
}

/// Where head `number` fires the picture's first column, and where the carriage fires its last.
bool Machine::placeHead(int number, int direction, double pitch, PassRecord *pass, double *lastX)
{
    const Head &head = m_heads.head(number);
    if (!head.inBar)
        return false;
    if (!head.pageExpected) {
        violation("no-page", QString("head %1 has no page for this pass").arg(number));
        return false;
    }
    if (head.pageWidth != pass->width)
        violation("page-width",
                  QString("page of %1 columns, picture of %2").arg(head.pageWidth).arg(pass->width));
    const double preset = m_presetValue / countsPerMicrometre();
    const double carriage = m_presetX + head.pageStart + head.pageOffset - preset;
    const double flight = m_x.speed() * geometry::dropFlightSeconds * direction;
    HeadPass &placed = pass->heads[number - 1];
    placed.fired = true;
    placed.firstX = carriage + geometry::headMountX[number - 1] + flight;
    placed.rowShift = m_heads.rowShift(number);
    const double last = carriage + direction * pitch * (pass->width - 1);
    if (!m_x.cruisesAt(carriage) || !m_x.cruisesAt(last))
        violation("page-outside-cruise",
                  QString("head %1 would fire from %2 to %3").arg(number).arg(carriage).arg(last));
    *lastX = direction > 0 ? std::max(*lastX, last) : std::min(*lastX, last);
    return true;
}

void Machine::checkHeads(const Picture &picture)
{
    if (!platformSeated)
        violation("no-platform", "a page is fired without a platform");
    if (picture.rows != geometry::barRows)
        violation("page-rows", QString("picture of %1 rows").arg(picture.rows));
    for (int number = 1; number <= geometry::heads; ++number) {
        if (m_heads.head(number).autofiring)
            violation("autofire", QString("head %1 fires by itself during a page").arg(number));
        Lag &heater = m_climate.heater(number, 1); // the sensor that the program waits for
        const double degrees = heater.real(now());
        if (degrees < coldestPrinting || degrees < heater.target() - coolerThanSet)
            violation("cold-head",
                      QString("head %1 at %2 of %3 degrees").arg(number).arg(degrees).arg(heater.target()));
    }
}

void Machine::firePage(double from, double to)
{
    Picture picture = std::move(*m_heads.armed);
    m_heads.armed.reset();
    const int direction = to > from ? 1 : -1;
    if (picture.forward != (direction > 0)) {
        violation("direction", QString("a %1 picture, a %2 sweep")
                                   .arg(picture.forward ? "forward" : "reverse")
                                   .arg(direction > 0 ? "forward" : "reverse"));
        return; // the encoder never passes the page's start in its direction
    }
    checkHeads(picture);
    ActivePass active;
    PassRecord &pass = active.record;
    pass.startSeconds = now();
    pass.forward = picture.forward;
    pass.columnPitch = m_heads.columnPitch(m_resolution);
    pass.y = m_y.position(now());
    pass.z = m_z.position(now());
    pass.width = picture.width;
    pass.rows = picture.rows;
    active.lastX = from;
    bool any = false;
    for (int number = 1; number <= geometry::heads; ++number)
        any |= placeHead(number, direction, pass.columnPitch, &pass, &active.lastX);
    if (!any) {
        violation("no-head", "a picture is armed and no head stands in the bar");
        return;
    }
    pass.structure = std::move(picture.structure);
    pass.support = std::move(picture.support);
    m_recorder.noteSweep(m_clock.wall());
    m_active = std::move(active);
}
