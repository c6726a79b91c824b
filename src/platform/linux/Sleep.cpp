#include "platform/Clock.h"

#include <chrono>
#include <sys/prctl.h>
#include <thread>

namespace
{
using Clock = std::chrono::steady_clock;

/// The kernel may wake a sleeper this much later than asked, to save power: 50 us by default, which adds up over the
/// short waits of a pass. A nanosecond is the least that counts as set.
constexpr unsigned long timerSlackNs = 1;
/// An idle core takes about this long to wake, so the end of a sleep is watched, giving way to others.
constexpr std::chrono::microseconds wakeLatency{100};

void wakeOnTime()
{
    thread_local const bool set = ::prctl(PR_SET_TIMERSLACK, timerSlackNs) == 0;
    (void)set;
}
} // namespace

void Sleep(unsigned ms)
{
    wakeOnTime();
    const auto end = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                        std::chrono::duration<double, std::milli>(ms / timeScale()));
    std::this_thread::sleep_until(end - wakeLatency);
    while (Clock::now() < end)
        std::this_thread::yield();
}
