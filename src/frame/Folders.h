#pragma once
// Folders of the installation and the paths of a model's files, relative to the working directory.

#include <QString>

/// Deletes a folder with all it holds; the result is that of the last rmdir. Empty path: false, nothing done.
bool removeFolder(const QString &path);

/// At start: removes left-over working folders of models and the old log folder, creates what is missing.
void prepareFolders();

QString modelPath(const QString &name);       ///< "model/" + name
QString modelIniPath(const QString &name);    ///< "model/" + name + ".ini"
QString sliceFolder(const QString &name);     ///< "../.PeloraTemp/" + name
QString historyIconPath(const QString &name); ///< "../.PeloraTemp/HistoryIcon/" + name
