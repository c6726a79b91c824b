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
    /// Homes X, stops the boards' dot clock and sets the encoder there; 0 or an event id. Job thread or service
    /// page's worker.
    int homeCarriage();
    /// Homes the axes and proves that the ink stack is parked; 0 or an event id. Job thread or service page's
    /// worker.
    int prepareMachine();
    /// Wipes the heads on the ink stack; 0 or an event id. At the start of a job it is deep and fires the
    /// nozzles; the second argument has no effect. Reads the status alone: a stop ends it while it waits for
    /// ink. CleanNozzle.cpp. Job thread or service page's worker.
    int cleanNozzle(bool atStart, int unused);

signals:
    /// Asks the Home page to pause, as if its button were pressed.
    void pausePrintSingals();
    /// The job is over; its thread is about to end.
    void stopPrintSignals();
    void MessageFormShowSig(QString title, QString prompt, int icon, int btn, QString key);

protected:
    // All that follows: job thread.

    /// One job, as a list of its steps. JobSteps.cpp holds them.
    void run() override;
    /// Prints the model; an exit code of the job.
    virtual int printModel(bool clean, int passDelay) = 0;

    void showPrintMessage(quint32 code, const QString &text, int icon, int btn);
    /// Takes the message off the screen.
    void clearPrintMessage(int icon = 0);
    /// Ends a job with a message. With `moveZ` the bed first drops clear of the heads. The status stays as it
    /// is.
    void stopPrint(quint32 code, const QString &text, int icon, int btn, bool moveZ, float z);
    bool isStopped() const { return getPrintStatus() == PrintStatusIdle; }
    /// Holds while paused, the job's only pause point. Adds the seconds spent; returns the status on leaving.
    int waitPaused(double *seconds = nullptr);
    /// Holds while a head's tank is low; false when the operator stopped the job.
    bool waitHeadInk();
    /// Holds until the slicer is far enough ahead to begin, or the job is stopped.
    void waitPreSlice();
    /// Holds until a layer's pictures are in memory; -1 when the operator stopped the job.
    int waitSlice(int layer, float z);
    /// Reads the roller's speed, a second time after 5 s if it is slow. False when it stays slow.
    bool isLevellerTurning(int *speed);
    /// Mark of the queue, icon and history row of a job that ended with `code`. PrintRecord.cpp.
    void PrintRecord(int code);

    void setState(const QString &key, const QJsonValue &value);
    /// The dot clock of 3 boards in the present resolution.
    HibDotClock dotClockRecord(int count, float frequency) PELORA_REQUIRES(m_recordMutex);

    /// Layer in work, as the slicer counts. Any thread may read.
    std::atomic<int> m_printLayer{0};
    /// Cleanings of this job so far. The thread that cleans.
    int m_cleanCnt = 0;
    /// Layers still to be printed again going back; 0 in normal printing.
    std::atomic<int> m_reprintCounter{0};
    /// Pictures handed to the library in this transfer; the library's thread counts.
    std::atomic<int> m_imagesSent{0};

    Mutex
        m_recordMutex; // the library's thread copies a picture record while the service thread sets the clock
    HibDotClock m_dotClock PELORA_GUARDED_BY(m_recordMutex){};
    HibPackedImage m_packedImage PELORA_GUARDED_BY(m_recordMutex){};

private:
    void beginJob();
    bool startLeveller();
    void waitInkDoorClosed();
    void markStarted(const QString &model);
    bool acceptMachineType(const QString &machineType);
    int heatUp();
    int checkConfiguration();
    void showResult(int code);
    void standBy();
    void finish(int code);
    // Steps of cleanNozzle, each with its code.
    int approachStack();
    int pressOnStack();
    int pressHeads();
    void waitVacuum();
    int wipeHeads(bool atStart);
    int pullInkStackBack();
    int showStackFault();
    int stopCleaning();
    int holdForSlice(int layer, int waitNumber, float z);

    mutable Mutex m_stateMutex; // the job thread writes while pages and remote commands copy
    QJsonObject m_printState PELORA_GUARDED_BY(m_stateMutex);
};
