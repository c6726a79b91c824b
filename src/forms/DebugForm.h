#pragma once
// The service page: test runs of ink station, dots, Z axis and purge, and the norm values of the heads.

#include "engine/NormValues.h"
#include "engine/ServiceRuns.h"
#include "forms/IMsgForm.h"

#include <QButtonGroup>
#include <QThreadPool>
#include <QWidget>
#include <memory>

namespace Ui
{
class DebugForm;
}

/// A run's moves are made on a thread of their own; the message form stands over the pages from its first
/// question to its result, so nothing else can be started meanwhile. GUI thread.
class DebugForm : public QWidget, public IMsgForm
{
    Q_OBJECT
public:
    DebugForm();
    ~DebugForm() override;

public slots:
    void on_pushButton_back_clicked();
    void on_pushButton_presssInk_clicked();
    void on_pushButton_zTest_clicked();
    void on_pushButton_printDot_clicked();
    void on_pushButton_pullInkStation_clicked();
    void on_toolButton_minus_clicked();
    void on_toolButton_plus_clicked();
    void on_pushButton_normEdit_clicked();
    void on_pushButton_normOriginal_clicked();
    void on_pushButton_normEdited_clicked();

private:
    /// What a run does and says.
    struct Run {
        ServiceEnd (*rounds)(const KeepGoing &);
        QString open; ///< stands while the rounds go on; closing it ends them
        QString ending;
        QString done; ///< %1: the rounds
    };

    void setUpNormTool();
    void alone(void (DebugForm::*routine)());
    void pressInk();
    void testZ();
    void printDot();
    void pullInkStation();
    bool askStation();
    bool mayPrintDots();
    bool prepareStation();
    void runUntilClosed(const Run &run);
    bool ask(const QString &question);
    bool tell(const QString &text);
    bool tellPreparing();
    void fail(const QString &text);
    void fail(int code);
    void changeOffset(int step);
    void workNormValues(NormOperation operation, const QString &question);

    std::unique_ptr<Ui::DebugForm> ui;
    QThreadPool m_worker;      ///< one thread: the rounds
    KeepGoing m_keepGoing;     ///< taken back by this thread, looked at by the worker
    bool m_running = false;    ///< a routine is between its first question and its result
    QButtonGroup m_normHeads;  ///< ids: board
    QButtonGroup m_normColors; ///< ids: colour
    int m_normOffset = 0;
};

/// The process's one such page. GUI thread.
DebugForm *debugForm();
