#include "platform/PlatformSettings.h"

#include "platform/Mutex.h"

namespace
{
using Lookup = std::function<QJsonValue(const QString &key)>;

struct Settings {
    Mutex mutex; // set at start by the main thread, read by any
    Lookup lookup PELORA_GUARDED_BY(mutex);
};

Settings &settings()
{
    static auto *instance = new Settings; // outlives every thread
    return *instance;
}
} // namespace

void setPlatformSettings(Lookup lookup)
{
    MutexLock lock(settings().mutex);
    settings().lookup = std::move(lookup);
}

QJsonValue platformSetting(const QString &key)
{
    Lookup lookup;
    {
        MutexLock lock(settings().mutex);
        lookup = settings().lookup;
    }
    return lookup ? lookup(key) : QJsonValue(QJsonValue::Undefined);
}
