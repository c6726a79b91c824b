#pragma once
// Fired passes, and the file that keeps them. The layout of the file is told in docs/simulator.md.

#include "common/Geometry.h"
#include "common/SparsePlane.h"

#include <QString>
#include <vector>

/// One head in one pass.
struct HeadPass {
    bool fired = false;
    double firstX = 0; ///< where the drop of the picture's first column lands on the bed
    int rowShift = 0;  ///< picture row minus bar row; 0 when the head is entered where it is mounted
};

struct PassRecord {
    double startSeconds = 0; ///< machine time of the sweep's start
    double endSeconds = 0;   ///< when the last column was fired
    bool forward = false;    ///< X grows
    double columnPitch = 0;
    double y = 0; ///< of the carriage
    double z = 0;
    int width = 0;
    int rows = 0;
    HeadPass heads[geometry::heads];
    SparsePlane structure;
    SparsePlane support;

    /// Where a dot of head `head` lands, given picture row and column.
    double dotX(int head, int column) const
    {
        return heads[head].firstX + (forward ? 1 : -1) * column * columnPitch;
    }
    double dotY(int head, int row) const { return y + (row - heads[head].rowShift) * geometry::nozzlePitch; }
    /// The head whose nozzle prints a picture row, -1 when none does.
    int headOfRow(int row) const;
};

bool writePasses(const QString &path, const std::vector<PassRecord> &passes, QString *error);
bool readPasses(const QString &path, std::vector<PassRecord> *passes, QString *error);
