#include "engine/Geometry.h"

bool isKnownPassCount(int passCnt)
{
    return passCnt == 4 || passCnt == 8 || passCnt == 12;
}

int nozzleShift(int layer)
{
    static constexpr int shifts[9] = {0, 4, 1, 8, 5, 2, 6, 3, 7};
    return shifts[((layer % 9) + 9) % 9];
}

int layerPhase(int pass, int layer, int passCnt)
{
    // A group of layers prints all rows: one layer with 4 rows a nozzle, two with 8, three with 12.
    static constexpr int pattern[3][3] = {{0, 0, 0}, {0, 1, 0}, {0, 2, 1}};
    const int layersPerGroup = passCnt / passesPerLayer;
    const int base =
        pattern[layersPerGroup - 1][((layer % layersPerGroup) + layersPerGroup) % layersPerGroup];
    static constexpr int order[passesPerLayer] = {0, 2, 1, 3};
    return base + order[pass] * layersPerGroup;
}

float passY(int phase, int layer, int passCnt)
{
    return static_cast<float>(nozzlePitch / passCnt * phase + yBase - nozzleShift(layer) * nozzlePitch);
}

int encoderCounts(float micrometres, float countsPerInch)
{
    return static_cast<int>(micrometres / (inchUm / countsPerInch));
}
