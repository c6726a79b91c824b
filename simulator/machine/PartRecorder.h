#pragma once
// Keeps every fired pass, counts its dots, and times what the program adds between two sweeps.

#include "common/PassFile.h"

#include <array>
#include <vector>

/// From the moment when the program was told that a page is complete to the start of the next page's sweep.
struct Gap {
    double wallMs = 0;
    double motionSeconds = 0; ///< machine time of the Y and Z moves in it
};

/// By head and material (0 structure, 1 support).
using DotCounts = std::array<std::array<quint64, 2>, geometry::heads>;

class PartRecorder
{
public:
    static constexpr size_t passesPerLayer = 4;

    /// Returns the dots of this pass.
    DotCounts addPass(PassRecord pass);
    const std::vector<PassRecord> &passes() const { return m_passes; }
    size_t layers() const { return m_passes.size() / passesPerLayer; }
    /// Dots by head and material (0 structure, 1 support).
    quint64 dots(int head, int material) const { return m_dots[size_t(head)][size_t(material)]; }

    void noteComplete(double wallSeconds);
    void noteMotion(char axis, double seconds);
    void noteSweep(double wallSeconds);
    const std::vector<Gap> &gaps() const { return m_gaps; }

private:
    std::vector<PassRecord> m_passes;
    DotCounts m_dots{};
    std::vector<Gap> m_gaps;
    double m_completeAt = -1;
    double m_motion = 0;
};
