#pragma once

#include <QFileDevice>

/// Writes `length` bytes to a new or emptied file, through all caches to the disk. False when the file cannot
/// be opened or written. Any thread.
bool writeThrough(const QString &path, const char *bytes, int length);

/// Sends what an open file was written, and its entry in its folder, through all caches to the disk, so that
/// the disk may be pulled. False when the disk refuses. Any thread.
bool flushToDisk(QFileDevice &file);
