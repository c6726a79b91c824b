#pragma once
// The way of the wax: from a bottle to the valve island of its material, from there to the tanks of the
// heads, out of the heads as drops or by pressing. Nothing ticks: settle() lets flow what has flowed since
// the last call. Every gram that leaves one place arrives in another or in a total.

#include "common/Geometry.h"

#include <array>
#include <cstddef>

class Machine;

/// In the order of the hold pressures and of the recorder's counts.
enum InkMaterial { Structure, Support, InkMaterials };

/// Grams since the start.
struct InkTotals {
    double fed = 0;       ///< bottles to island
    double nozzleFed = 0; ///< island to tanks
    double printed = 0;   ///< as drops
    double pressed = 0;   ///< through the heads onto the stack
    int failedFeeds = 0;
};

class InkPath
{
public:
    /// What the board tells of the last valve feed of a material.
    enum Result { Good, Failed, None };

    explicit InkPath(Machine &machine) : m_machine(machine) {}

    void settle();

    // Board 3.
    /// Valves 1 and 2; 0 is a request that names none.
    void feedValve(InkMaterial material, int valve);
    void feedNozzle(InkMaterial material, int head);
    void setNozzleTime(InkMaterial material, int tenths) { m_lines[material].nozzleTenths = tenths; }
    /// Asked at the start of each pass over a path, so it tells whether the program knows of an open door.
    void askDemand();
    bool demands(InkMaterial material) const { return m_lines[material].island < islandDemand; }
    bool busy(InkMaterial material) const { return m_lines[material].feed.kind != Feed::No; }
    Result result(InkMaterial material) const { return m_lines[material].result; }

    // Board 5.
    void tellDoor(bool closed);
    void setPressTime(int tenths) { m_pressTenths = tenths; }
    /// Presses both inks of a head.
    void press(int head);

    // Heads.
    /// False when the tank held less than these drops.
    bool fire(int head, InkMaterial material, double drops);
    /// As the head's sensor tells.
    int level(int head, InkMaterial material) const;
    double tank(int head, InkMaterial material) const
    {
        return m_lines[material].tanks[std::size_t(head - 1)];
    }
    double island(InkMaterial material) const { return m_lines[material].island; }
    const InkTotals &totals(InkMaterial material) const { return m_lines[material].totals; }

    // Faults. What they put in or take away is in no total.
    void setTank(int head, InkMaterial material, double grams);
    void setIsland(InkMaterial material, double grams) { m_lines[material].island = grams; }
    /// The next feeds from a bottle fail and nothing flows.
    void failFeeds(InkMaterial material, int count) { m_lines[material].failing = count; }
    /// Pressing takes ten times the wax.
    void setGushing(int head, bool gushing) { m_gushing[std::size_t(head - 1)] = gushing; }

    static constexpr double fullTank = 20; ///< grams
    static constexpr double levelPerGram = 61000 / fullTank;

private:
    static constexpr double islandDemand = 70;

    struct Feed {
        enum Kind { No, Valve, Nozzle } kind = No;
        int place = 0; ///< bottle's position, or head
        double wanted = 0;
        double moved = 0;
        double since = 0;
        double until = 0;
    };
    struct Line {
        double island = islandDemand + 2; ///< so that the first job feeds
        std::array<double, geometry::heads> tanks{fullTank, fullTank, fullTank};
        Feed feed;
        Result result = None;
        int failing = 0;
        int nozzleTenths = 8;
        InkTotals totals;
    };

    bool mayStart(InkMaterial material, int place);
    double &source(InkMaterial material);
    double &sink(Line &line);
    void flow(InkMaterial material, double now);
    bool interrupted(const Feed &feed) const;
    void start(InkMaterial material, Feed::Kind kind, int place, double grams, double seconds);
    void finish(InkMaterial material);
    void autofire(double seconds);

    Machine &m_machine;
    std::array<Line, InkMaterials> m_lines;
    std::array<bool, geometry::heads> m_gushing{};
    int m_pressTenths = 3;
    double m_settled = 0;
    bool m_toldOpen = false;
    double m_toldAt = 0;     ///< machine time when the program was told that the door is open
    double m_toldAtWall = 0; ///< the same by a real clock
    bool m_passWithOpenDoor = false;
};
