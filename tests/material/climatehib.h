#pragma once
// A head library with settable temperatures, levels and failures. It lacks what the services never call.

#include <atomic>

struct ClimateHib {
    std::atomic<int> boards{3};
    std::atomic<int> initResult{0};
    std::atomic<float> mfgCode{88.51f};
    std::atomic<int> dotClockResult{0};
    std::atomic<int> voltageResult{0};
    std::atomic<float> degrees[9] = {}; ///< head 1 sensors 1 to 3, head 2, head 3
    std::atomic<float> setPoints[9] = {};
    std::atomic<int> levels[6] = {}; ///< head 1 support, structure, head 2, head 3
    std::atomic<int> silentHead{0};  ///< the head whose levels cannot be read; 0: none
};

extern "C" ClimateHib *climateHib();
