#include "platform/Clock.h"

#include <chrono>
#include <cstdlib>
#include <thread>

namespace
{
double readTimeScale()
{
    const char *text = std::getenv("PELORA_TIME_SCALE");
    const double scale = text ? std::atof(text) : 1.0;
    return scale > 0 ? scale : 1.0;
}
} // namespace

double timeScale()
{
    static const double scale = readTimeScale();
    return scale;
}

void Sleep(unsigned ms)
{
    std::this_thread::sleep_for(std::chrono::duration<double, std::milli>(ms / timeScale()));
}
