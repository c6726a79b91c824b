#pragma once
// What a run leaves behind: the JSON report, the file of passes, pictures of layers and of the part.

#include <QJsonObject>
#include <QString>
#include <QVector>

class Machine;

struct ReportOptions {
    QString file;        ///< empty: none
    QString partsFolder; ///< empty: no pictures and no file of passes
    QVector<int> layers; ///< pictured; empty: a few over the height
    /// In one gap: Y confirmed 30, Y read back 20, X read 20, X confirmed 20. The model's wait comes on top.
    double statedSleepMs = 90;
};

/// Writes everything. Empty on success, else what is wrong.
QString writeReport(const Machine &machine, const ReportOptions &options);
QJsonObject reportOf(const Machine &machine, const ReportOptions &options);
