#include "InkPath.h"

#include "Machine.h"

#include <cmath>

namespace
{
/// A feed may start just below the full mark of 60000, and once more on a reading from before the feed.
constexpr int highestLevel = 68000;
constexpr double islandCapacity = 140;
constexpr double valveGrams = 65;
constexpr double valveSeconds = 6.5;
constexpr double nozzleGramsPerSecond = 1.5;
constexpr double dropGrams = 30e-9;
constexpr double pressGramsPerTenth = 1.0 / 3;
constexpr double gush = 10;
constexpr double pressedPressure = -150; ///< of the head, right after pressing
// The program looks at the door every 500 ms; a busy computer may be late with it.
constexpr double doorGrace = 2;
constexpr double doorGraceWall = 0.5;

const char *nameOf(InkMaterial material)
{
    return material == Support ? "support" : "structure";
}
} // namespace

bool InkPath::mayStart(InkMaterial material, int place)
{
    if (!place) {
        m_machine.violation("feed-request", QString("a %1 feed names no place").arg(nameOf(material)));
        return false;
    }
    if (busy(material)) {
        m_machine.violation("feed-while-busy", QString("the %1 path is still feeding").arg(nameOf(material)));
        return false;
    }
    if (m_passWithOpenDoor && !m_machine.inkDoorClosed)
        m_machine.violation("feed-with-open-door",
                            QString("%1 is fed, and the open door was known").arg(nameOf(material)));
    return true;
}

void InkPath::feedValve(InkMaterial material, int valve)
{
    settle();
    if (!mayStart(material, valve))
        return;
    Line &line = m_lines[material];
    const double room = islandCapacity - line.island;
    if (room < valveGrams)
        m_machine.violation("overfilled-island",
                            QString("%1 g in the %2 island").arg(line.island).arg(nameOf(material)));
    const bool fails = line.failing > 0;
    line.failing -= fails;
    line.result = None;
    start(material, Feed::Valve, valve + (material == Structure ? 2 : 0),
          fails ? 0 : std::max(0.0, std::min(valveGrams, room)), valveSeconds);
}

void InkPath::feedNozzle(InkMaterial material, int head)
{
    settle();
    if (!mayStart(material, head))
        return;
    const double seconds = m_lines[material].nozzleTenths / 10.0;
    start(material, Feed::Nozzle, head, seconds * nozzleGramsPerSecond, seconds);
}

void InkPath::start(InkMaterial material, Feed::Kind kind, int place, double grams, double seconds)
{
    m_lines[material].feed = {kind, place, grams, 0, m_settled, m_settled + seconds};
    flow(material, m_settled); // a feed that cannot begin ends here
}

double &InkPath::source(InkMaterial material)
{
    Line &line = m_lines[material];
    return line.feed.kind == Feed::Valve ? m_machine.bottles().at(line.feed.place).grams : line.island;
}

double &InkPath::sink(Line &line)
{
    return line.feed.kind == Feed::Valve ? line.island : line.tanks[size_t(line.feed.place - 1)];
}

/// An open door or a missing bottle ends a feed from a bottle. What happens is settled before, so it ends
/// then.
bool InkPath::interrupted(const Feed &feed) const
{
    return feed.kind == Feed::Valve &&
           (!m_machine.inkDoorClosed || !m_machine.bottles().at(feed.place).present);
}

void InkPath::flow(InkMaterial material, double now)
{
    Line &line = m_lines[material];
    Feed &feed = line.feed;
    if (feed.kind == Feed::No)
        return;
    const bool ended = now >= feed.until;
    if (!interrupted(feed)) {
        const double due = ended ? feed.wanted : feed.wanted * (now - feed.since) / (feed.until - feed.since);
        const double grams = std::min(due - feed.moved, source(material));
        source(material) -= grams;
        sink(line) += grams;
        feed.moved += grams;
        (feed.kind == Feed::Valve ? line.totals.fed : line.totals.nozzleFed) += grams;
    }
    if (ended || interrupted(feed))
        finish(material);
}

void InkPath::finish(InkMaterial material)
{
    Line &line = m_lines[material];
    const Feed feed = line.feed;
    line.feed = {};
    if (feed.kind == Feed::Valve) {
        // Sums of parts: a whole feed may be short by a rounding.
        line.result = feed.moved > valveGrams - 1e-6 ? Good : Failed;
        line.totals.failedFeeds += line.result == Failed;
    } else if (level(feed.place, material) > highestLevel) {
        m_machine.violation("overfilled-tank", QString("level %1 of head %2, %3")
                                                   .arg(level(feed.place, material))
                                                   .arg(feed.place)
                                                   .arg(nameOf(material)));
    }
}

void InkPath::settle()
{
    const double now = m_machine.now();
    const double seconds = now - m_settled;
    m_settled = now;
    flow(Structure, now);
    flow(Support, now);
    if (seconds > 0)
        autofire(seconds);
}

/// Pairs of rows carry the inks by turns, support in rows 1 and 2.
void InkPath::autofire(double seconds)
{
    for (int number = 1; number <= geometry::heads; ++number) {
        Head &head = m_machine.headArray().head(number);
        if (!head.autofiring)
            continue;
        double shots = head.autofireHz * seconds;
        if (head.autofireLeft) {
            shots = std::min(shots, *head.autofireLeft);
            *head.autofireLeft -= shots;
            head.autofiring = *head.autofireLeft > 0;
        }
        double jets[InkMaterials] = {};
        for (size_t row = 1; row < head.autofire.size(); ++row)
            jets[(row - 1) / 2 % 2 ? Structure : Support] += head.autofire[row];
        fire(number, Structure, shots * jets[Structure]);
        fire(number, Support, shots * jets[Support]);
    }
}

void InkPath::askDemand()
{
    m_passWithOpenDoor = m_toldOpen && m_machine.now() > m_toldAt + doorGrace &&
                         m_machine.clock().wall() > m_toldAtWall + doorGraceWall;
}

void InkPath::tellDoor(bool closed)
{
    if (!closed && !m_toldOpen) {
        m_toldAt = m_machine.now();
        m_toldAtWall = m_machine.clock().wall();
    }
    m_toldOpen = !closed;
}

void InkPath::press(int head)
{
    settle();
    if (!m_machine.stackUnderHeads() && !m_machine.containerUnderHeads())
        m_machine.violation("press-without-stack", QString("X %1, Z %2, stack %3")
                                                       .arg(m_machine.xCounts())
                                                       .arg(m_machine.zPosition())
                                                       .arg(m_machine.stackCoupled() ? "coupled" : "parked"));
    const double grams = m_pressTenths * pressGramsPerTenth * (m_gushing[size_t(head - 1)] ? gush : 1);
    for (InkMaterial material : {Structure, Support}) {
        Line &line = m_lines[material];
        double &tank = line.tanks[size_t(head - 1)];
        const double taken = std::min(grams, tank);
        tank -= taken;
        line.totals.pressed += taken;
        m_machine.climate().holdPressure(material, head).push(pressedPressure, m_machine.now());
    }
}

bool InkPath::fire(int head, InkMaterial material, double drops)
{
    Line &line = m_lines[material];
    double &tank = line.tanks[size_t(head - 1)];
    const double grams = drops * dropGrams;
    const double taken = std::min(grams, tank);
    tank -= taken;
    line.totals.printed += taken;
    return taken == grams;
}

int InkPath::level(int head, InkMaterial material) const
{
    return int(std::lround(tank(head, material) * levelPerGram));
}

void InkPath::setTank(int head, InkMaterial material, double grams)
{
    m_lines[material].tanks[size_t(head - 1)] = grams;
}
