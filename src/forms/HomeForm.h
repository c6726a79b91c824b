#pragma once
// The status page of a print, with the buttons that start, hold and stop it.

#include "forms/IMsgForm.h"
#include "platform/DiskSpace.h"

#include <QThreadPool>
#include <QTimer>
#include <QWidget>
#include <memory>

namespace Ui
{
class HomeForm;
}
class QJsonObject;
class QLabel;
class QProgressBar;
struct Bottles;
struct CardInfo;

/// What the space of the program's disk means for a start.
struct DiskVerdict {
    bool mayPrint = true;
    QString message; ///< what the operator is told; empty: nothing
};
/// `root` is the beginning of the program's path. Only prints when there is room for the layers.
DiskVerdict judgeDisk(const QString &root, const DiskSpace &space);

/// GUI thread.
class HomeForm : public QWidget, public IMsgForm
{
    Q_OBJECT
public:
    HomeForm();
    ~HomeForm() override;

    bool eventFilter(QObject *watched, QEvent *event) override;
    /// Shows the two bottles in use.
    void showBottles(const Bottles &bottles);

public slots:
    /// Every 5 s, whichever page is up: the material page, bottles, times and progress.
    void msecEvent();
    /// The job is over.
    void stopPrintSlots();
    /// Start, pause or resume, as the job's status tells.
    void on_pushButton_printImage_clicked();
    void on_pushButton_printStop_clicked();
    void on_pushButton_lock_clicked();
    void on_pushButton_warning_clicked();
    void showStatus();
    /// Opens the sockets by which clients find the machine.
    void udpServer();
    /// A client asks who is there.
    void processPendingDatagram();

protected:
    void showEvent(QShowEvent *event) override;

private:
    void setUpButtons();
    void showWarningCount();
    void jobThreadFinished();
    bool checkDiskSpace();
    bool isPlatformInPlace();
    void waitMessageClosed();
    bool startJob();
    void setPrintIcon(const QString &name);
    QString loadFile();
    void loadPicture(const QString &name);
    void showBottle(QProgressBar *bar, QLabel *label, const CardInfo &bottle);
    void showProgress(const QJsonObject &state);
    void drawRing();

    std::unique_ptr<Ui::HomeForm> ui;
    QTimer m_timer;
    QThreadPool m_boardCalls; ///< one thread: commands of this page keep their order
    float m_angle = 0;        ///< degrees of the progress ring
    int m_locked = 0;         ///< front door
    bool m_asking = false;    ///< a board is asked: the print button waits
    bool m_jobShown = false;  ///< a job was started here and is not over
};

/// The process's one home page. GUI thread.
HomeForm *homeForm();
