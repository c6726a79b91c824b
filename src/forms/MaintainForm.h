#pragma once
// The maintenance plan: twelve routine jobs, what is left of their cycles, and the notice when one is due.

#include "forms/IMsgForm.h"

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

private:
    std::unique_ptr<Ui::MaintainForm> ui;
};

/// The process's one such page. GUI thread.
MaintainForm *maintainForm();
