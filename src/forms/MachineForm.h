#pragma once
// What this machine is: model, versions, serial number, address.

#include "forms/IMsgForm.h"

#include <QFutureWatcher>
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

protected:
    void showEvent(QShowEvent *event) override;

private:
    std::unique_ptr<Ui::MachineForm> ui;
    QFutureWatcher<QString> m_headLibrary;
};

/// The process's one such page. GUI thread.
MachineForm *machineForm();
