#include "HeadArray.h"

#include <algorithm>

namespace
{
// A trapezoid with a damping tail; the peak is what the drive voltage means.
constexpr std::pair<float, float> knots[heads::knotCount] = {{0.0F, 0.0F},  {2.0F, 20.0F}, {6.0F, 20.0F},
                                                             {8.0F, 0.0F},  {9.5F, -6.0F}, {12.0F, -6.0F},
                                                             {13.0F, 0.0F}, {15.0F, 0.0F}};
} // namespace

HeadArray::HeadArray()
{
    for (Head &head : m_heads) {
        for (size_t i = 0; i < head.waveform.size(); ++i) {
            WaveformKnot &knot = head.waveform[i];
            knot.time = knots[i].first;
            knot.voltage = knots[i].second;
            knot.drive = knot.connect = 1;
            knot.scalable = knot.voltage > 0;
        }
    }
}

/// A head that is entered elsewhere than where it is mounted prints the picture's rows that much further on.
int HeadArray::rowShift(int number) const
{
    const Head &one = head(number);
    const geometry::MountedHead &mounted = geometry::mountedHeads[number - 1];
    return (one.firstRow - one.overlap) - (mounted.firstRow - mounted.overlap);
}

bool HeadArray::pageExpected() const
{
    return std::any_of(m_heads.begin(), m_heads.end(), [](const Head &head) { return head.pageExpected; });
}

void HeadArray::clearPages()
{
    for (Head &head : m_heads)
        head.pageExpected = false;
}

double HeadArray::columnPitch(double encoderResolution) const
{
    return geometry::micrometresPerInch / clock.dpi * (clock.divider / (0.25 * encoderResolution));
}

float HeadArray::peakVoltage(int number) const
{
    const auto &waveform = head(number).waveform;
    const auto higher = [](const auto &a, const auto &b) { return a.voltage < b.voltage; };
    return std::max_element(waveform.begin(), waveform.end(), higher)->voltage;
}

void HeadArray::adjustVoltage(int number, float difference)
{
    const float peak = peakVoltage(number);
    for (WaveformKnot &knot : head(number).waveform) {
        if (knot.voltage == peak)
            knot.voltage += difference;
    }
}
