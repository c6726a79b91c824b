#pragma once
// The list of the events that are active.

#include "forms/IMsgForm.h"

#include <QWidget>
#include <memory>

namespace Ui
{
class WarningForm;
}

/// GUI thread.
class WarningForm : public QWidget, public IMsgForm
{
    Q_OBJECT
public:
    WarningForm();
    ~WarningForm() override;

public slots:
    void on_pushButton_back_clicked();

private:
    std::unique_ptr<Ui::WarningForm> ui;
};

/// The process's one such page. GUI thread.
WarningForm *warningForm();
