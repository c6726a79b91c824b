#pragma once
// QMutex with clang's lock annotations. Debian's Qt is not built for the thread sanitizer, which so cannot
// see QMutex' own futex; this wrapper tells it of each lock and unlock.

#include "platform/ThreadAnnotations.h"

#include <QMutex>

#if defined(__SANITIZE_THREAD__)
#define PELORA_TSAN 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define PELORA_TSAN 1
#endif
#endif

#ifdef PELORA_TSAN
#include <sanitizer/tsan_interface.h>
#define PELORA_TSAN_CALL(x) x
#else
#define PELORA_TSAN_CALL(x)
#endif

/// Non-recursive mutex. Any thread. Write beside each member the two threads and the race it stops.
class PELORA_CAPABILITY("mutex") Mutex
{
public:
    Mutex() { PELORA_TSAN_CALL(__tsan_mutex_create(this, 0)); }
    ~Mutex() { PELORA_TSAN_CALL(__tsan_mutex_destroy(this, 0)); }
    Mutex(const Mutex &) = delete;
    Mutex &operator=(const Mutex &) = delete;

    void lock() PELORA_ACQUIRE()
    {
        PELORA_TSAN_CALL(__tsan_mutex_pre_lock(this, 0));
        m_mutex.lock();
        PELORA_TSAN_CALL(__tsan_mutex_post_lock(this, 0, 0));
    }
    bool tryLock() PELORA_TRY_ACQUIRE(true)
    {
        PELORA_TSAN_CALL(__tsan_mutex_pre_lock(this, __tsan_mutex_try_lock));
        const bool taken = m_mutex.tryLock();
        PELORA_TSAN_CALL(__tsan_mutex_post_lock(
            this, taken ? __tsan_mutex_try_lock : (__tsan_mutex_try_lock | __tsan_mutex_try_lock_failed), 0));
        return taken;
    }
    void unlock() PELORA_RELEASE()
    {
        PELORA_TSAN_CALL(__tsan_mutex_pre_unlock(this, 0));
        m_mutex.unlock();
        PELORA_TSAN_CALL(__tsan_mutex_post_unlock(this, 0));
    }

private:
    QMutex m_mutex;
};

/// Holds a Mutex for a scope.
class PELORA_SCOPED_CAPABILITY MutexLock
{
public:
    explicit MutexLock(Mutex &mutex) PELORA_ACQUIRE(mutex) : m_mutex(mutex) { m_mutex.lock(); }
    ~MutexLock() PELORA_RELEASE() { m_mutex.unlock(); }
    MutexLock(const MutexLock &) = delete;
    MutexLock &operator=(const MutexLock &) = delete;

private:
    Mutex &m_mutex;
};
