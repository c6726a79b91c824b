// Drive voltage of the heads. The boards adjust by a difference, so the peak in force is read first.

#include "engine/HibLibrary.h"
#include "platform/Log.h"

#include <QVector>
#include <algorithm>
#include <cstdio>

namespace
{
/// The highest knot of a head's waveform, never below 0. False when it cannot be read.
bool readPeak(int head, float *peak)
{
    *peak = 0.0f;
    const int count = lockHibWaveformMaxKnotCount(head);
    if (count > maxWaveformKnots) {
        LOG_WARNING(QStringLiteral("waveform of head %1 claims %2 knots").arg(head).arg(count));
        return false;
    }
    if (count >= minWaveformKnots) {
        QVector<HibWaveformKnot> knots(count, HibWaveformKnot{});
        if (lockHibGetWaveform(head, mainWaveform, knots.data()) != 0) {
            LOG_WARNING(QStringLiteral("waveform of head %1 cannot be read").arg(head));
            return false;
        }
        for (const HibWaveformKnot &knot : knots)
            *peak = std::max(*peak, knot.voltage);
    }
    std::printf(" The max waveform voltage is  %f\n", static_cast<double>(*peak));
    std::fflush(stdout);
    return true;
}

bool adjustHead(int head, float wanted)
{
    float peak = 0.0f;
    if (!readPeak(head, &peak))
        return false;
    const float difference = wanted - peak;
    std::printf("waveform%d = %f\r\n", head, static_cast<double>(difference));
    std::fflush(stdout);
    if (difference == 0.0f)
        return true;
    if (lockHibAdjustWaveformVoltage(head, mainWaveform, difference) != 0)
        return false;
    readPeak(head, &peak);
    return true;
}
} // namespace

bool setWaveformVoltage(float v1, float v2, float v3)
{
    LOG_WARNING(QStringLiteral("waveform1=%1,waveform2=%2,waveform3=%3").arg(v1).arg(v2).arg(v3));
    return adjustHead(1, v1) && adjustHead(2, v2) && adjustHead(3, v3);
}
