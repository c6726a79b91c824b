#include "links/BoardCall.h"
#include "links/BoardCommands.h"

#include "frame/JsonConfig.h"

namespace
{

constexpr quint8 codeNozzleFanTemps = 0x42; // board 6: data[2..4]
constexpr quint8 codeSetFans = 0x46;        // board 6
constexpr quint8 codeAirTemps = 0x32;       // board 5: data[5] is the chamber's top

struct FanStep {
    const char *threshold;
    const char *rpm;
};

// Hottest first; the first threshold that is reached decides.
constexpr FanStep fanSteps[] = {
    {",top2Temp", ",top2Rpm"},
    {",top1Temp", ",top1Rpm"},
    {",norTemp", ",norRpm"},
    {",low1Temp", ",low1Rpm"},
};
constexpr char coolestRpm[] = ",low2Rpm";

float fanValue(const QString &prefix, const char *suffix)
{
    return fanConfig()->getFloat(prefix + QLatin1String(suffix));
}

} // namespace

void setFanStatus(quint8 a, quint8 b, quint8 c, quint8 d)
{
    sendOnly(byteMessage(boardHead, codeSetFans, 2, {a, b, c, d}));
}

quint8 fanRpmForTemp(const QString &prefix, float temperature)
{
    const char *rpm = coolestRpm;
    for (const FanStep &step : fanSteps) {
        if (temperature >= fanValue(prefix, step.threshold)) {
            rpm = step.rpm;
            break;
        }
    }
    return quint8(truncated(fanValue(prefix, rpm)));
}

void updateFanSpeeds(int)
{
    CanMsg nozzles = canMessage(boardHead, codeNozzleFanTemps);
    sendCommand(nozzles, &nozzles);
    const auto nozzleFan = [&nozzles](int head) {
        return fanRpmForTemp(QStringLiteral("Nozzle%1Fan").arg(head), nozzles.data[1 + head]);
    };
    const quint8 first = nozzleFan(1);
    setFanStatus(first, nozzleFan(2), nozzleFan(3), first);

    CanMsg air = canMessage(boardAir, codeAirTemps);
    if (send(air) != SendOk)
        return;
    setTopFan(fanRpmForTemp(QStringLiteral("TopFan"), air.data[5]), 0xAA, 0xAA, 0xFF, 0xFF);
}
