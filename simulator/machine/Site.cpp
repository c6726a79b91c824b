#include "Site.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSaveFile>
#include <sys/un.h>

namespace
{
// A desk or a CI machine has less disk than the program asks of a print.
constexpr int diskTotalGB = 500;
constexpr int diskAvailableGB = 400;

void removeLinks(const QString &folder)
{
    for (const QFileInfo &entry :
         QDir(folder).entryInfoList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)) {
        if (entry.isSymLink())
            QFile::remove(entry.filePath());
    }
}
} // namespace

/// The kernel takes socket paths up to 107 bytes: a deep folder has its sockets under the system's temporary
/// folder.
QString Site::socketPath(const QString &name)
{
    const QString path = folder + "/" + name;
    if (QFile::encodeName(path).size() < int(sizeof(sockaddr_un::sun_path)))
        return path;
    const QString shortFolder =
        QStringLiteral("%1/pelora-machine-%2").arg(QDir::tempPath()).arg(QCoreApplication::applicationPid());
    QDir().mkpath(shortFolder);
    QFile::setPermissions(shortFolder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    note = "the folder is too deep for sockets: they are in " + shortFolder;
    return shortFolder + "/" + name;
}

bool Site::prepare(QString *error)
{
    install = QDir::cleanPath(QDir(install).absolutePath());
    folder = QDir::cleanPath(install + "/../.PeloraTemp/machine");
    if (!QDir(install).exists() || !QDir().mkpath(folder)) {
        *error = install + ": no installation folder, or nothing can be made beside it";
        return false;
    }
    const auto fill = [](QString *path, const QString &usual) {
        *path = path->isEmpty() ? usual : QDir::cleanPath(QDir().absoluteFilePath(*path));
    };
    fill(&bridge, folder + "/bridge");
    fill(&cards, folder + "/cards");
    fill(&media, folder + "/media");
    fill(&heads, heads.isEmpty() ? socketPath("heads") : heads);
    fill(&control, control.isEmpty() ? socketPath("control") : control);
    QDir().mkpath(media);
    removeLinks(media);
    return true;
}

bool Site::tellProgram(QString *error) const
{
    const QString path = install + "/config/Platform.json";
    QJsonObject settings;
    QFile old(path);
    if (old.open(QIODevice::ReadOnly))
        settings = QJsonDocument::fromJson(old.readAll()).object();
    settings["COM16"] = bridge;
    settings["COM5"] = cards;
    settings["HeadsSocket"] = heads;
    settings["MachineControl"] = control;
    settings["MediaFolder"] = media;
    if (!settings.contains("DiskTotalGB"))
        settings["DiskTotalGB"] = diskTotalGB;
    if (!settings.contains("DiskAvailableGB"))
        settings["DiskAvailableGB"] = diskAvailableGB;
    QDir().mkpath(install + "/config");
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(settings).toJson()) > 0 && file.commit())
        return true;
    *error = path + ": " + file.errorString();
    return false;
}

QJsonObject Site::toJson() const
{
    QJsonObject json{{"bridge", bridge}, {"cards", cards},     {"heads", heads},
                     {"media", media},   {"control", control}, {"install", install}};
    if (!note.isEmpty())
        json["note"] = note;
    return json;
}

/// A link: what the program writes to the disk lands in the folder itself.
bool Site::plug(const QString &folderOfVolume, const QString &name, QString *error) const
{
    const QFileInfo volume(folderOfVolume);
    const QString link = media + "/" + (name.isEmpty() ? volume.fileName() : name);
    if (!volume.isDir())
        *error = folderOfVolume + ": no folder";
    else if (QFileInfo(link).isSymLink() || QFileInfo::exists(link))
        *error = QFileInfo(link).fileName() + " is plugged already";
    else if (!QFile::link(volume.absoluteFilePath(), link))
        *error = link + ": the link cannot be made";
    return error->isEmpty();
}

bool Site::unplug(const QString &name, QString *error) const
{
    if (name.isEmpty()) {
        removeLinks(media);
        return true;
    }
    if (!QFileInfo(media + "/" + name).isSymLink() || !QFile::remove(media + "/" + name))
        *error = name + " is not plugged";
    return error->isEmpty();
}
