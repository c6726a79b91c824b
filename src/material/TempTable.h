#pragma once
// The set-points of every heated zone for each temperature mode, and their file config/temp.bin. Plain data:
// the owner guards it.

#include "links/CanMsg.h"

#include <QString>

constexpr int tempModes = 3;       ///< 0 start, 1 printing, 2 keep-warm
constexpr int tempMeasuredRow = 3; ///< the row after those of the modes holds what was measured
constexpr int tempRows = 4;
constexpr int tempGroups = 8;
constexpr int tempZonesPerGroup = 7; ///< degrees in data[1..7] of a group's message
constexpr int tempHeads = 3;
constexpr int tempSensorsPerHead = 3;
constexpr int tempHeadBytes = tempHeads * tempSensorsPerHead;

/// The table as it stands in the file, behind the version word.
struct TempTable {
    static constexpr int storedGroups = 12; ///< the last four are spare

    CanMsg groups[storedGroups][tempRows]; ///< rows 0 to 2: write messages of the modes; row 3: read message
    quint8 headTemps[tempRows][tempHeadBytes] = {}; ///< head 1 sensors 1 to 3, head 2, head 3

    quint8 zone(int row, int group, int zone) const { return groups[group][row].data[zone]; }
    quint8 head(int row, int head, int sensor) const
    {
        return headTemps[row][(head - 1) * tempSensorsPerHead + sensor - 1];
    }
};

/// Sets board and command of every group's messages; what a file said of them does not count.
void fixTempGroups(TempTable &table);

/// The event id of a zone: board, read command and zone number 1 to 7, a byte each.
quint32 zoneEventId(const TempTable &table, int group, int zone);

/// Reads the file: version (u32, 16), 768 bytes of groups, 36 bytes of head temperatures. False, and `table`
/// as it was, when it cannot be read (logged) or has another version (quiet).
bool readTempTable(const QString &path, TempTable &table);
/// Writes the file; false when that failed (logged).
bool writeTempTable(const QString &path, const TempTable &table);
