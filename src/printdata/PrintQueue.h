#pragma once
// The queue of models in the database, and their files. Pages and remote commands change it through these.
// Any thread.

#include <QList>
#include <QString>

enum QueueStatus : int { QueueWaiting = 0, QueuePrinted = 1, QueueAborted = 2 };

struct QueueRow {
    QString modelName;
    QString createTime;
    QString endTime;
};

QList<QueueRow> queueRows(int status);
/// What a waiting model will need of each wax, in grams; less than 0: not known.
struct WaxNeed {
    QString modelName;
    double structure = -1;
    double support = -1;
};
QList<WaxNeed> waitingNeeds();
/// The lowest ID of a status minus 1, or -1: what a row takes to come first.
int headId(int status);
/// ModelName of the first waiting row; empty when there is none.
QString firstWaitingModel();
/// Extracts the model's settings and puts it at the head of the waiting rows, replacing a row of the same
/// name.
void addToQueue(const QString &modelName);
/// Deletes row, model file, side files and working folder.
void removeModel(const QString &modelName);
/// Swaps with the neighbour in the list of that status; false when there is none.
bool moveRow(const QString &modelName, bool up, int status);
void moveToTop(const QString &modelName, int status);
/// Puts a row back at the head of the waiting list.
void reprintModel(const QString &modelName);
