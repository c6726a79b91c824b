#pragma once
// Space of the disk that the program is on.

#include <QString>

struct DiskSpace {
    double totalGB = 0;     ///< in units of 2^30 bytes
    double availableGB = 0; ///< what this program may still use
};

/// Space of the disk that holds `path`. "DiskTotalGB" and "DiskAvailableGB" of config/Platform.json stand in
/// for the answer where they are given. Any thread.
DiskSpace diskSpace(const QString &path);
