#pragma once
// Removable volumes: arrival with a drive letter, removal, and the folder behind a letter.

#include <QObject>
#include <QString>
#include <memory>

/// Letter code of sigUDiskChange for "none".
constexpr quint8 noVolume = 0xFF;

/// Watches "MediaFolder" of config/Platform.json (default /media). The first subfolder that appears is E, the
/// next F. GUI thread.
class VolumeWatcher : public QObject
{
    Q_OBJECT
public:
    explicit VolumeWatcher(QObject *parent = nullptr);
    ~VolumeWatcher() override;
    /// Begins to watch; volumes that are there already count as arrived, after the event loop's next round.
    void start();

signals:
    /// A volume arrived; `letter` is its letter's code, 'E' first.
    void arrived(quint8 letter);
    void removed();
    void otherChange();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

/// The path on this system for a path with a drive letter ("E:\\x"): x in that letter's folder. Paths without
/// a known letter come back as they are, with forward slashes. Any thread.
QString volumePath(const QString &path);
