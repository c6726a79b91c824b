#pragma once
// The .tzl model file: header, settings text, two pictures. Geometry is the slicer's business. Lengths and
// offsets of the file are checked against its size before anything is allocated or read.

#include <QImage>
#include <QPixmap>
#include <QSettings>
#include <QString>

/// Extracts `path`.ini and, when `icon` is not null, fills the icon in its present size. 0, or -1 when the
/// file, its header or its settings cannot be read. `path` is "model/<name>". GUI thread or job thread; any
/// thread without an icon.
int GetModelBmpAndIni(const QString &path, QPixmap *icon);
/// The same with an image for an icon. Any thread.
int readModelIcon(const QString &path, QImage *icon);

/// Fills the large preview, its black transparent, leaving no file behind. 0 or -1. GUI thread.
int readModelView(const QString &path, QPixmap *view);

/// True for a plain file name: one that stays in its folder and is not the name of a folder of the program's
/// own beside the models' working folders. Any thread.
bool isModelName(const QString &name);

/// The settings of a model, from the side file that GetModelBmpAndIni writes. Their text is UTF-8: opened as
/// plain QSettings, names of materials in Chinese come out wrong. One thread each.
class ModelSettings : public QSettings
{
public:
    explicit ModelSettings(const QString &modelName);
};
