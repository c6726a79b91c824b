#include "platform/Clock.h"

#include <cstdlib>

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
