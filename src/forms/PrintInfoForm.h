#pragma once
// One model's details, and its start.

#include "forms/IMsgForm.h"

#include <QWidget>
#include <memory>

namespace Ui
{
class PrintInfoForm;
}

/// GUI thread.
class PrintInfoForm : public QWidget, public IMsgForm
{
    Q_OBJECT
public:
    PrintInfoForm();
    ~PrintInfoForm() override;

    /// Fills the page with a model of the queue.
    void showModel(const QString &modelName);

public slots:
    void on_pushButton_back_clicked();

private:
    std::unique_ptr<Ui::PrintInfoForm> ui;
};

/// The process's one such page. GUI thread.
PrintInfoForm *printInfoForm();
