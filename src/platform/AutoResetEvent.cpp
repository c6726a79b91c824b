#include "platform/AutoResetEvent.h"

#include <chrono>

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
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    std::unique_lock<std::mutex> lock(m_mutex);
    if (!m_condition.wait_until(lock, end, [this] { return m_signalled; }))
        return false;
    m_signalled = false;
    return true;
}
