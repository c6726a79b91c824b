#include "printdata/QueueNotice.h"

#include "platform/Mutex.h"

#include <atomic>

namespace
{
std::atomic<bool> queueChanged{false};

struct Refresh {
    Mutex mutex; // the page installs itself while the link's thread may already ask
    std::function<void()> call PELORA_GUARDED_BY(mutex);
};

Refresh &queueRefresh()
{
    static Refresh refresh;
    return refresh;
}
} // namespace

void setQueueRefresh(std::function<void()> refresh)
{
    Refresh &target = queueRefresh();
    MutexLock lock(target.mutex);
    target.call = std::move(refresh);
}

void setQueueChanged(bool changed)
{
    queueChanged = changed;
}

void refreshQueue(bool changed)
{
    setQueueChanged(changed);
    std::function<void()> call;
    {
        Refresh &source = queueRefresh();
        MutexLock lock(source.mutex);
        call = source.call;
    }
    if (call)
        call();
}

bool takeQueueChanged()
{
    return queueChanged.exchange(false);
}
