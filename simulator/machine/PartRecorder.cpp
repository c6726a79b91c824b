#include "PartRecorder.h"

namespace
{
void count(const PassRecord &pass, const SparsePlane &plane, size_t material, DotCounts *dots)
{
    plane.forEachRow([&](int row, int, const uint8_t *data, int bytes) {
        const int head = pass.headOfRow(row);
        if (head >= 0)
            (*dots)[size_t(head)][material] += SparsePlane::countBits(data, bytes);
    });
}
} // namespace

DotCounts PartRecorder::addPass(PassRecord pass)
{
    DotCounts dots{};
    count(pass, pass.structure, 0, &dots);
    count(pass, pass.support, 1, &dots);
    for (size_t head = 0; head < dots.size(); ++head) {
        for (size_t material : {0, 1})
            m_dots[head][material] += dots[head][material];
    }
    m_passes.push_back(std::move(pass));
    return dots;
}

void PartRecorder::noteComplete(double wallSeconds)
{
    m_completeAt = wallSeconds;
    m_motion = 0;
}

/// X runs out while the program sleeps before the pass, so it is never waited for on its own.
void PartRecorder::noteMotion(char axis, double seconds)
{
    if (axis != 'x')
        m_motion += seconds;
}

void PartRecorder::noteSweep(double wallSeconds)
{
    if (m_completeAt >= 0)
        m_gaps.push_back({(wallSeconds - m_completeAt) * 1000, m_motion});
    m_completeAt = -1;
}
