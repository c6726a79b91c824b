#pragma once
// What config/Platform.json holds, handed down by the frame so that this folder needs no JSON store of its
// own.

#include <QJsonValue>
#include <QString>
#include <functional>

/// Sets where keys are looked up. Called once by the frame, before any other facility is used.
void setPlatformSettings(std::function<QJsonValue(const QString &key)> lookup);

/// The value of a key, undefined when absent or when nothing was set. Any thread.
QJsonValue platformSetting(const QString &key);
