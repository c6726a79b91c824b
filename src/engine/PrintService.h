#pragma once
// The thread that owns one print job from the press of Start to the last record.

#include "frame/PrintStatus.h"
#include "hibApi.h"
#include "platform/Mutex.h"

#include <QJsonObject>
#include <QString>
#include <QThread>
#include <atomic>

class PrintService : public QThread
{
    Q_OBJECT
public:
    PrintService();

    /// 0 printing, 1 paused, 2 stopped or idle. Any thread.
    int getPrintStatus() const;
    void setPrintStatus(int status);
    /// A copy of the job's public state. Any thread.
    QJsonObject printState() const;
    void resetPrintState(double leftTime);

    /// Stops autofire, clears its masks and sets the boards' dot clock. Between jobs. Any thread.
    bool setDotClock(int count, float frequency);
    /// Homes the axes and proves that the ink stack is parked; 0 or an event id. Job thread or service page's worker.
    int prepareMachine();

signals:
    void pausePrintSingals();
    void stopPrintSignals();
    void MessageFormShowSig(QString title, QString prompt, int icon, int btn, QString key);

protected:
    void run() override;
    /// Prints the model; an exit code of the job.
    virtual int printModel(bool clean, int passDelay) = 0;

    // the engine's own developer completes this class
};
