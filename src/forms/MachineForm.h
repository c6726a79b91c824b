#pragma once
// What this machine is: model, versions, serial number, address.

#include "forms/IMsgForm.h"

#include <QWidget>
#include <memory>

namespace Ui
{
class MachineForm;
}

/// GUI thread.
class MachineForm : public QWidget, public IMsgForm
{
    Q_OBJECT
public:
    MachineForm();
    ~MachineForm() override;

public slots:
    void on_pushButton_back_clicked();

private:
    std::unique_ptr<Ui::MachineForm> ui;
};

/// The process's one such page. GUI thread.
MachineForm *machineForm();
