#pragma once
// A head library with settable results, as far as the services call it.

#include <atomic>

struct ClimateHib {
    std::atomic<int> boards{3}, dotClockResult{0}, voltageResult{0}, levelResult{0};
    std::atomic<int> levels[6]{{11}, {13}, {21}, {23}, {31}, {33}}; ///< head 1 support, structure, head 2
    std::atomic<float> mfgCode{88.51f};
    std::atomic<float> degrees{70.9f}; ///< of every sensor
    std::atomic<float> setPoints[9];   ///< head 1 sensors 1 to 3, head 2, head 3
};

extern "C" ClimateHib *climateHib();
