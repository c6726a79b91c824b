#pragma once
// Meshes for end-to-end tests: small parts that reach over all three heads.

#include <QString>

/// Writes an STL of a bar across the whole print bar with a wider top, so that it needs support. Height in mm.
bool writeTeeBar(const QString &file, double height);

/// A bar across the whole print bar, the same in every layer.
bool writeBar(const QString &file, double height);
