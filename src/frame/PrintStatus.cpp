#include "frame/PrintStatus.h"

std::atomic<int> &printStatus()
{
    static std::atomic<int> status{PrintStatusIdle};
    return status;
}
