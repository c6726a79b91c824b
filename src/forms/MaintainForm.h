#pragma once
// The maintenance plan: twelve routine jobs, what is left of their cycles, and the notice when one is due.

#include "events/MaintainPlan.h"
#include "forms/IMsgForm.h"

#include <QStandardItemModel>
#include <QWidget>
#include <memory>

namespace Ui
{
class MaintainForm;
}

/// GUI thread.
class MaintainForm : public QWidget, public IMsgForm
{
    Q_OBJECT
public:
    MaintainForm();
    ~MaintainForm() override;

    /// Begins the check, once a minute, whether the page is shown or not.
    void startCheck();

public slots:
    void on_pushButton_back_clicked();
    /// A touch of a row asks whether that job was done.
    void showToolTip(QModelIndex index);

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void setUpTable();
    void check();
    void showRest(int row, int percent);
    void showScrollButtons();

    std::unique_ptr<Ui::MaintainForm> ui;
    MaintainPlan m_plan;
    QStandardItemModel m_model;
    int m_timerId = 0;
};

/// The process's one such page. GUI thread.
MaintainForm *maintainForm();
