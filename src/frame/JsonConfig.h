#pragma once
// One JSON file in memory. Nothing caches a value: a new document takes effect at the next read.

#include "platform/Mutex.h"

#include <QJsonObject>
#include <QString>

class JsonConfig
{
public:
    JsonConfig() = default;
    explicit JsonConfig(const QString &path) { Init(path); }

    /// Reads `path` (relative to the working directory). False when it is missing, unreadable or no JSON; the
    /// document then stays as it was. May be called again. Any thread, as everything here.
    bool Init(QString path);
    /// A copy of the document.
    QJsonObject object() const;
    /// A number by "key" or "group,key"; 0 for whatever is absent or no number.
    float getFloat(QString keyPath) const;
    QString getString(QString key) const;
    QJsonValue getValue(QString key) const;
    /// In memory only.
    void setValue(QString key, QJsonValue value);
    /// In memory, and the whole document to the file.
    void setValueSync(QString key, QJsonValue value);
    /// Adds to a number, absent counting as 0, in memory and in the file. No addition of another thread is
    /// lost.
    void addSync(const QString &key, double amount);
    /// Replaces the document by the JSON text in `bytes` up to its first zero byte, and the file `path` by
    /// all `length` bytes as they are. False, and nothing changed, when it is no JSON.
    bool syncFile(const char *bytes, int length, QString path);
    /// Replaces document and file by a text.
    void syncFile(QString document);

private:
    void insertSync(const QString &key, const QJsonValue &value) PELORA_REQUIRES(m_mutex);
    int writeFile(const char *bytes, int length, const QString &path) PELORA_REQUIRES(m_mutex);

    mutable Mutex m_mutex; // remote writes against the reads of the job and service threads
    QString m_fileName PELORA_GUARDED_BY(m_mutex);
    QJsonObject m_object PELORA_GUARDED_BY(m_mutex);
};

JsonConfig *sysConfig();
JsonConfig *useInfoConfig();
JsonConfig *inkConfig();
JsonConfig *airConfig();
JsonConfig *fanConfig();
JsonConfig *machineNameConfig();
JsonConfig *settingsConfig();
JsonConfig *materialsConfig();
JsonConfig *stylesConfig();
/// config/Platform.json: what stands for the machine's computer, see docs/configuration.md.
JsonConfig *platformConfig();
