#include "tests/material/climatehib.h"

#include "hibApi.h"

extern "C" {
ClimateHib *climateHib()
{
    static ClimateHib hib;
    return &hib;
}

int32_t hibInitAllBoards(int32_t *boardCount, int32_t flag)
{
    *boardCount = climateHib()->boards;
    return flag == 1 ? climateHib()->initResult.load() : 99;
}

int32_t hibGetMfgCode(int32_t, float *code)
{
    *code = climateHib()->mfgCode;
    return 0;
}

int32_t hibSetupAllDotclocks(const HibDotClock *)
{
    return climateHib()->dotClockResult;
}
int32_t hibConfigPage(int32_t, float, float, int32_t, int32_t)
{
    return 0;
}
int32_t hibSetAutofireMask(int32_t, int32_t, int32_t)
{
    return 0;
}
int32_t hibAutofireStop(int32_t)
{
    return 0;
}

int32_t hibGetHeadInkLevels(int32_t head, int32_t *support, int32_t *second, int32_t *structure,
                            int32_t *fourth)
{
    *support = climateHib()->levels[2 * head - 2];
    *structure = climateHib()->levels[2 * head - 1];
    *second = *fourth = -7;
    return climateHib()->silentHead == head ? 5 : 0;
}

int32_t hibGetHeaterTemp(int32_t head, int32_t sensor, float *degrees)
{
    *degrees = climateHib()->degrees[3 * head + sensor - 4];
    return 0;
}

int32_t hibSetThermalSetpoint(int32_t head, int32_t one, int32_t sensor, float degrees)
{
    climateHib()->setPoints[3 * head + sensor - 4] = one == 1 ? degrees : -1.0f;
    return 0;
}

int32_t hibWaveformMaxKnotCount(int32_t)
{
    return 3;
}
int32_t hibGetWaveform(int32_t, int32_t, HibWaveformKnot *)
{
    return 0;
}
int32_t hibAdjustWaveformVoltage(int32_t, int32_t, float)
{
    return climateHib()->voltageResult;
}
}
