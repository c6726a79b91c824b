#include "climatehib.h"

#include "hibApi.h"

namespace
{
ClimateHib hib;
}

extern "C" {
ClimateHib *climateHib()
{
    return &hib;
}
int32_t hibInitAllBoards(int32_t *boardCount, int32_t flag)
{
    *boardCount = flag == 1 ? hib.boards.load() : 0;
    return 0;
}
int32_t hibGetMfgCode(int32_t, float *code)
{
    *code = hib.mfgCode;
    return 0;
}
int32_t hibSetupAllDotclocks(const HibDotClock *)
{
    return hib.dotClockResult;
}
int32_t hibAdjustWaveformVoltage(int32_t, int32_t, float)
{
    return hib.voltageResult;
}
int32_t hibGetHeadInkLevels(int32_t head, int32_t *support, int32_t *, int32_t *structure, int32_t *)
{
    *support = hib.levels[2 * head - 2];
    *structure = hib.levels[2 * head - 1];
    return hib.levelResult;
}
int32_t hibGetHeaterTemp(int32_t, int32_t, float *degrees)
{
    *degrees = hib.degrees;
    return 0;
}
int32_t hibSetThermalSetpoint(int32_t head, int32_t one, int32_t sensor, float degrees)
{
    hib.setPoints[3 * head + sensor - 4] = one * degrees;
    return 0;
}
}
