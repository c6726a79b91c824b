#include "PartRecorder.h"

void PartRecorder::count(const PassRecord &pass, const SparsePlane &plane, size_t material)
{
    plane.forEachRow([&](int row, int, const uint8_t *data, int bytes) {
        const int head = pass.headOfRow(row);
        if (head < 0)
            return;
        m_dots[size_t(head)][material] += SparsePlane::countBits(data, bytes);
    });
}

void PartRecorder::addPass(PassRecord pass)
{
    count(pass, pass.structure, 0);
    count(pass, pass.support, 1);
    m_passes.push_back(std::move(pass));
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
