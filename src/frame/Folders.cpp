#include "frame/Folders.h"

#include <QDir>
#include <QFileInfo>

namespace
{
// Files whose name begins with a dot and broken links are ordinary entries: a folder that keeps one cannot
// go.
constexpr auto everything = QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System;

/// The whole absolute path counts, not the folder's own name: below a folder named so, everything is left
/// over.
bool isModelFolder(const QString &absolutePath)
{
    return absolutePath.contains(QLatin1String("_tzl")) || absolutePath.contains(QLatin1String(".tzl"));
}
} // namespace

bool removeFolder(const QString &path)
{
    if (path.isEmpty())
        return false;
    QDir folder(path);
    if (!folder.exists())
        return false;
    for (const QFileInfo &entry : folder.entryInfoList(everything, QDir::NoSort)) {
        if (entry.isDir() && !entry.isSymLink()) // what a link points to is not ours to delete
            removeFolder(entry.absoluteFilePath());
        else
            entry.dir().remove(entry.fileName());
    }
    return folder.rmdir(folder.absolutePath());
}

void prepareFolders()
{
    const QDir here{QString()};
    const auto folders = QDir::Dirs | QDir::NoDot | QDir::NoDotDot | QDir::Hidden;
    for (const QFileInfo &entry : here.entryInfoList(folders, QDir::NoSort)) {
        if (isModelFolder(entry.absoluteFilePath()))
            removeFolder(entry.absoluteFilePath());
    }
    removeFolder(QStringLiteral("log"));
    // mkdir makes one level only: a parent stands before its children.
    for (const char *name :
         {"model", "config", "../.PeloraTemp/", "../.PeloraTemp/HistoryIcon", "../.PeloraTemp/log"})
        here.mkdir(QLatin1String(name));
}

QString modelPath(const QString &name)
{
    return QStringLiteral("model/") + name;
}

QString modelIniPath(const QString &name)
{
    return modelPath(name) + QStringLiteral(".ini");
}

QString sliceFolder(const QString &name)
{
    return QStringLiteral("../.PeloraTemp/") + name;
}

QString historyIconPath(const QString &name)
{
    return QStringLiteral("../.PeloraTemp/HistoryIcon/") + name;
}
