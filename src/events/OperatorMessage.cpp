#include "events/OperatorMessage.h"

#include "platform/Mutex.h"

namespace
{
struct Waiter {
    Mutex mutex; // the GUI thread installs, worker threads call
    std::function<int()> call PELORA_GUARDED_BY(mutex);
};

Waiter &waiter()
{
    static auto *instance = new Waiter; // outlives every thread
    return *instance;
}
} // namespace

QString messageTitle(quint32 id)
{
    return QStringLiteral("%1").arg(id, 8, 16, QLatin1Char('0'));
}

void setMessageWaiter(std::function<int()> call)
{
    MutexLock lock(waiter().mutex);
    waiter().call = std::move(call);
}

int waitMessageForm()
{
    std::function<int()> call;
    {
        MutexLock lock(waiter().mutex);
        call = waiter().call;
    }
    return call ? call() : 0;
}
