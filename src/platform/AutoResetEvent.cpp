#include "platform/AutoResetEvent.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace
{
using Clock = std::chrono::steady_clock;

/// Waking a thread that sleeps on an idle core takes longer than a board's answer does, so a wait looks for a moment,
/// giving way to others each time, before it sleeps. Measured: a request and its answer take a third of the time.
constexpr std::chrono::microseconds lookBeforeSleep{200};
} // namespace

void AutoResetEvent::set()
{
    std::lock_guard<std::mutex> lock(m_mutex);
    m_signalled = true;
    m_condition.notify_one();
}

void AutoResetEvent::reset()
{
    std::lock_guard<std::mutex> lock(m_mutex);
    m_signalled = false;
}

bool AutoResetEvent::wait(unsigned timeoutMs)
{
    const auto start = Clock::now();
    const auto end = start + std::chrono::milliseconds(timeoutMs);
    while (!m_signalled && Clock::now() < std::min(end, start + lookBeforeSleep))
        std::this_thread::yield();
    std::unique_lock<std::mutex> lock(m_mutex);
    if (!m_condition.wait_until(lock, end, [this] { return m_signalled.load(); }))
        return false;
    m_signalled = false;
    return true;
}
