#include "support/TestInstall.h"

#include "frame/Folders.h"
#include "frame/JsonConfig.h"
#include "frame/RotatingLog.h"
#include "platform/PlatformSettings.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QThread>

namespace
{
struct Store {
    const char *name;
    JsonConfig *(*config)();
};
constexpr Store stores[] = {{"Sys", sysConfig},           {"UseInfo", useInfoConfig},
                            {"Ink", inkConfig},           {"Air", airConfig},
                            {"Fan", fanConfig},           {"MachineName", machineNameConfig},
                            {"Settings", settingsConfig}, {"Materials", materialsConfig},
                            {"Styles", stylesConfig},     {"Platform", platformConfig}};

const QString &startFolder()
{
    static const QString folder = QDir::currentPath();
    return folder;
}
} // namespace

bool waitUntil(const std::function<bool()> &condition, int ms)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.hasExpired(ms))
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QThread::msleep(1);
    }
    return true;
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}

TestInstall::TestInstall()
{
    startFolder(); // before it changes
    if (!m_folder.isValid() || !QDir(m_folder.path()).mkpath(QStringLiteral("install/config")))
        qFatal("no temporary folder");
    QDir::setCurrent(folder());
    prepareFolders();
    setPlatformSettings([](const QString &key) { return platformConfig()->getValue(key); });
    for (const Store &store : stores)
        writeConfig(QLatin1String(store.name), {});
}

TestInstall::~TestInstall()
{
    if (QDir::currentPath().startsWith(folder())) // not so when the next one was made before this one went
        QDir::setCurrent(startFolder());
}

void TestInstall::writeConfig(const QString &name, const QJsonObject &object)
{
    const QString path = QStringLiteral("config/%1.json").arg(name);
    writeFile(path, QJsonDocument(object).toJson());
    for (const Store &store : stores) {
        if (name == QLatin1String(store.name))
            store.config()->Init(path);
    }
}

void TestInstall::setPlatform(const QJsonObject &keys)
{
    for (auto it = keys.begin(); it != keys.end(); ++it)
        m_platform.insert(it.key(), it.value());
    writeConfig(QStringLiteral("Platform"), m_platform);
}

QByteArray TestInstall::log(const QString &name) const
{
    return readFile(parent() + QStringLiteral("/.PeloraTemp/log/") + name);
}
