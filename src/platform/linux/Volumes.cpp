#include "platform/Volumes.h"

#include "platform/Mutex.h"
#include "platform/PlatformSettings.h"

#include <QDir>
#include <QFile>
#include <QFileSystemWatcher>
#include <QMap>
#include <QTimer>

#include <sys/stat.h>

namespace
{
constexpr quint8 firstLetter = 'E'; // A to D are the computer's own
constexpr quint8 lastLetter = 'Z';
constexpr int pollMs =
    1000; // mounts do not show in a folder watch, nor does a media folder that is still to come

struct Volume {
    QString folder;
    dev_t device = 0; // changes when something is mounted on the folder or taken off it
};

struct VolumeTable {
    Mutex mutex; // the GUI thread writes, any thread asks for a path
    QMap<quint8, Volume> volumes PELORA_GUARDED_BY(mutex);
};

VolumeTable &table()
{
    static auto *instance = new VolumeTable; // outlives every thread
    return *instance;
}

QString mediaFolder()
{
    return platformSetting(QStringLiteral("MediaFolder")).toString(QStringLiteral("/media"));
}

/// The subfolders of the media folder that are there now, by name, with their devices.
QMap<QString, dev_t> presentFolders(const QString &media)
{
    QMap<QString, dev_t> present;
    const QDir folder(media);
    for (const QString &name : folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        struct stat status {
        };
        const QString path = folder.absoluteFilePath(name);
        if (::stat(QFile::encodeName(path).constData(), &status) == 0)
            present.insert(path, status.st_dev);
    }
    return present;
}

struct Changes {
    QList<quint8> arrived;
    bool removed = false;
};

quint8 freeLetter(const QMap<quint8, Volume> &volumes)
{
    quint8 letter = firstLetter;
    while (letter <= lastLetter && volumes.contains(letter))
        ++letter;
    return letter <= lastLetter ? letter : noVolume;
}

/// Takes what is gone out of the table and what is new into it. A letter stays with its folder until then.
Changes updateTable(QMap<QString, dev_t> present)
{
    Changes changes;
    MutexLock lock(table().mutex);
    QMap<quint8, Volume> &volumes = table().volumes;
    for (auto it = volumes.begin(); it != volumes.end();) {
        const auto still = present.find(it->folder);
        if (still == present.end()) {
            changes.removed = true;
            it = volumes.erase(it);
            continue;
        }
        if (still.value() != it->device)
            changes.arrived.append(it.key());
        it->device = still.value();
        present.erase(still);
        ++it;
    }
    for (auto it = present.cbegin(); it != present.cend(); ++it) {
        const quint8 letter = freeLetter(volumes);
        if (letter == noVolume)
            break;
        volumes.insert(letter, {it.key(), it.value()});
        changes.arrived.append(letter);
    }
    return changes;
}
} // namespace

struct VolumeWatcher::Private {
    QString media;
    QFileSystemWatcher watcher;
    QTimer poll;
};

VolumeWatcher::VolumeWatcher(QObject *parent) : QObject(parent), d(new Private) {}

VolumeWatcher::~VolumeWatcher() = default;

void VolumeWatcher::start()
{
    d->media = mediaFolder();
    const auto scan = [this](bool announced) {
        if (d->watcher.directories().isEmpty() && QDir(d->media).exists())
            d->watcher.addPath(d->media);
        const Changes changes = updateTable(presentFolders(d->media));
        if (changes.removed)
            emit removed();
        for (const quint8 letter : changes.arrived)
            emit arrived(letter);
        if (announced && !changes.removed && changes.arrived.isEmpty())
            emit otherChange();
    };
    connect(&d->watcher, &QFileSystemWatcher::directoryChanged, this, [scan] { scan(true); });
    connect(&d->poll, &QTimer::timeout, this, [scan] { scan(false); });
    d->poll.start(pollMs);
    QTimer::singleShot(0, this, [scan] { scan(false); });
}

QString volumePath(const QString &path)
{
    QString plain = path;
    plain.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (plain.size() < 2 || plain.at(1) != QLatin1Char(':'))
        return plain;
    const quint8 letter = quint8(plain.at(0).toUpper().toLatin1());
    MutexLock lock(table().mutex);
    const auto volume = table().volumes.constFind(letter);
    if (volume == table().volumes.constEnd())
        return plain;
    const QString rest = plain.mid(2);
    return volume->folder + (rest.startsWith(QLatin1Char('/')) ? QString() : QStringLiteral("/")) + rest;
}
