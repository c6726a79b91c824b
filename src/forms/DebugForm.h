#pragma once
// The service page: test runs of ink station, dots, Z axis and purge.

#include "forms/IMsgForm.h"

#include <QWidget>
#include <memory>

namespace Ui
{
class DebugForm;
}

/// GUI thread.
class DebugForm : public QWidget, public IMsgForm
{
    Q_OBJECT
public:
    DebugForm();
    ~DebugForm() override;

public slots:
    void on_pushButton_back_clicked();

private:
    std::unique_ptr<Ui::DebugForm> ui;
};

/// The process's one such page. GUI thread.
DebugForm *debugForm();
