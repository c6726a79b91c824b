#pragma once
// The one pattern of long-lived objects: created on first use, never destroyed.

#include "platform/Mutex.h"

/// The process's one T. Any thread.
template <class T> T *singleton()
{
    static Mutex mutex; // two threads may be the first
    static T *instance = nullptr;
    MutexLock lock(mutex);
    if (!instance)
        instance = new T;
    return instance;
}
