#pragma once
// An installation folder of a test's own, as working directory, with its neighbour .PeloraTemp for logs and
// slices.

#include <QElapsedTimer>
#include <QJsonObject>
#include <QString>
#include <QTemporaryDir>

#include <functional>

/// Runs the event loop until `condition` holds, at most `ms` milliseconds; whether it held. Test's main
/// thread.
bool waitUntil(const std::function<bool()> &condition, int ms = 5000);

QByteArray readFile(const QString &path);
void writeFile(const QString &path, const QByteArray &bytes);

/// The working directory is <temporary folder>/install while it lives. Construct one before the first use of
/// a configuration; a second one in the same process reads the configurations anew.
class TestInstall
{
public:
    TestInstall();
    ~TestInstall();
    TestInstall(const TestInstall &) = delete;
    TestInstall &operator=(const TestInstall &) = delete;

    /// The installation folder and what lies beside it.
    QString folder() const { return m_folder.filePath(QStringLiteral("install")); }
    QString parent() const { return m_folder.path(); }

    /// Writes config/<name>.json and has the program's own object read it, if it has one.
    void writeConfig(const QString &name, const QJsonObject &object);
    /// Adds keys to config/Platform.json.
    void setPlatform(const QJsonObject &keys);
    /// A file of ../.PeloraTemp/log.
    QByteArray log(const QString &name) const;

private:
    QTemporaryDir m_folder;
    QJsonObject m_platform;
};
