#include "frame/JsonConfig.h"

#include "frame/Singleton.h"
#include "platform/Log.h"
#include "platform/WriteThroughFile.h"

#include <QFile>
#include <QJsonDocument>
#include <QStringList>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace
{
float numberOf(const QJsonValue &value)
{
    return value.isDouble() ? float(value.toDouble()) : 0.0f;
}

/// False for text that is no JSON; `object` is then untouched.
bool parseObject(const QByteArray &text, QJsonObject *object, QString *errorText = nullptr)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (errorText)
        *errorText = error.errorString();
    if (error.error != QJsonParseError::NoError)
        return false;
    *object = document.object();
    return true;
}
} // namespace

bool JsonConfig::Init(QString path)
{
    if (path.isEmpty())
        return false;
    MutexLock lock(m_mutex);
    m_fileName = path;
    QFile file(path);
    if (!file.exists())
        return false;
    errno = 0;
    if (!file.open(QIODevice::ReadWrite)) {
        const QString reason = QString::fromLocal8Bit(std::strerror(errno));
        LOG_WARNING(QStringLiteral(" open %1 error %2").arg(path, reason));
        return false;
    }
    const QByteArray text = file.readAll();
    file.close();
    if (!parseObject(text, &m_object)) {
        LOG_WARNING(QStringLiteral("json error \r\n"));
        return false;
    }
    return true;
}

QJsonObject JsonConfig::object() const
{
    MutexLock lock(m_mutex);
    return m_object;
}

float JsonConfig::getFloat(QString keyPath) const
{
    const QStringList keys = keyPath.split(QLatin1Char(','));
    MutexLock lock(m_mutex);
    const QJsonValue value = m_object.value(keys.first());
    switch (keys.size()) {
    case 1:
        return numberOf(value);
    case 2:
        return numberOf(value.toObject().value(keys.at(1)));
    default:
        return 0;
    }
}

QString JsonConfig::getString(QString key) const
{
    return getValue(key).toString();
}

QJsonValue JsonConfig::getValue(QString key) const
{
    MutexLock lock(m_mutex);
    return m_object.value(key);
}

void JsonConfig::setValue(QString key, QJsonValue value)
{
    MutexLock lock(m_mutex);
    m_object.insert(key, value);
}

void JsonConfig::setValueSync(QString key, QJsonValue value)
{
    MutexLock lock(m_mutex);
    insertSync(key, value);
}

void JsonConfig::addSync(const QString &key, double amount)
{
    MutexLock lock(m_mutex);
    insertSync(key, m_object.value(key).toDouble() + amount);
}

void JsonConfig::insertSync(const QString &key, const QJsonValue &value)
{
    m_object.insert(key, value);
    const QByteArray text = QJsonDocument(m_object).toJson();
    writeFile(text.constData(), text.size(), m_fileName);
}

bool JsonConfig::syncFile(const char *bytes, int length, QString path)
{
    MutexLock lock(m_mutex);
    const QByteArray text(bytes, bytes ? int(qstrnlen(bytes, uint(qMax(length, 0)))) : 0);
    if (!parseObject(text, &m_object)) {
        LOG_WARNING(QStringLiteral("json error \r\n"));
        return false;
    }
    writeFile(bytes, length, path);
    return true;
}

void JsonConfig::syncFile(QString document)
{
    MutexLock lock(m_mutex);
    const QByteArray text = document.toUtf8();
    QString error;
    if (!parseObject(text, &m_object, &error)) {
        LOG_WARNING(QStringLiteral("json error \r\n") + error);
        return;
    }
    writeFile(text.constData(), text.size(), m_fileName);
}

int JsonConfig::writeFile(const char *bytes, int length, const QString &path)
{
    if (!writeThrough(path, bytes, length)) {
        std::fputs("create file error!\n", stdout);
        std::fflush(stdout);
    }
    return 0;
}

namespace
{
template <const char *path> struct ConfigFile : JsonConfig {
    ConfigFile() : JsonConfig(QString::fromLatin1(path)) {}
};

constexpr char sysFile[] = "config/Sys.json";
constexpr char useInfoFile[] = "config/UseInfo.json";
constexpr char inkFile[] = "config/Ink.json";
constexpr char airFile[] = "config/Air.json";
constexpr char fanFile[] = "config/Fan.json";
constexpr char machineNameFile[] = "config/MachineName.json";
constexpr char settingsFile[] = "config/Settings.json";
constexpr char materialsFile[] = "config/Materials.json";
constexpr char stylesFile[] = "config/Styles.json";
constexpr char platformFile[] = "config/Platform.json";
} // namespace

JsonConfig *sysConfig()
{
    return singleton<ConfigFile<sysFile>>();
}

JsonConfig *useInfoConfig()
{
    return singleton<ConfigFile<useInfoFile>>();
}

JsonConfig *inkConfig()
{
    return singleton<ConfigFile<inkFile>>();
}

JsonConfig *airConfig()
{
    return singleton<ConfigFile<airFile>>();
}

JsonConfig *fanConfig()
{
    return singleton<ConfigFile<fanFile>>();
}

JsonConfig *machineNameConfig()
{
    return singleton<ConfigFile<machineNameFile>>();
}

JsonConfig *settingsConfig()
{
    return singleton<ConfigFile<settingsFile>>();
}

JsonConfig *materialsConfig()
{
    return singleton<ConfigFile<materialsFile>>();
}

JsonConfig *stylesConfig()
{
    return singleton<ConfigFile<stylesFile>>();
}

JsonConfig *platformConfig()
{
    return singleton<ConfigFile<platformFile>>();
}
