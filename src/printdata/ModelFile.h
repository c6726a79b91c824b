#pragma once
// The .tzl model file: header, settings text, two pictures. Geometry is the slicer's business. Lengths and offsets
// of the file are checked against its size before anything is allocated or read.

#include <QPixmap>
#include <QString>

/// Extracts `path`.ini and, when `icon` is not null, fills the icon in its present size. 0, or -1 when the file,
/// its header or its settings cannot be read. `path` is "model/<name>". GUI thread or job thread.
int GetModelBmpAndIni(const QString &path, QPixmap *icon);

/// Fills the large preview, leaving no file behind. 0 or -1. GUI thread.
int readModelView(const QString &path, QPixmap *view);
