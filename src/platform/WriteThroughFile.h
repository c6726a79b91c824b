#pragma once

#include <QString>

/// Writes `length` bytes to a new or emptied file, through all caches to the disk. False when the file cannot
/// be opened or written. Any thread.
bool writeThrough(const QString &path, const char *bytes, int length);
