#pragma once
// Brings the head boards up with their dot clock and drive voltages, once at start.

#include <QString>
#include <QStringList>

/// What the operator has to be told of it.
struct HeadBoardReport {
    QStringList wrongBoards; ///< a line for each board with another maker's code than expected
    QString fault;           ///< empty when the boards are ready
};

/// Service thread.
HeadBoardReport setUpHeadBoards();
