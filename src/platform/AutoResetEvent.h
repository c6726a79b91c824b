#pragma once
// Auto-reset event: one set() lets one wait() through.

#include <atomic>
#include <condition_variable>
#include <mutex>

class AutoResetEvent
{
public:
    /// Signals the event; stays signalled until one wait takes it. Any thread.
    void set();
    void reset();
    /// Waits at most `timeoutMs` (unscaled); true when signalled, and the signal is consumed. Any thread.
    bool wait(unsigned timeoutMs);

private:
    std::mutex m_mutex; // the reader thread sets while a caller waits
    std::condition_variable m_condition;
    std::atomic<bool> m_signalled{false};
};
