#pragma once
// The page of the e-mail account and of what the daily mail tells.

#include "forms/IMsgForm.h"

#include <QWidget>
#include <memory>

namespace Ui
{
class EmailForm;
}

/// GUI thread.
class EmailForm : public QWidget, public IMsgForm
{
    Q_OBJECT
public:
    EmailForm();
    ~EmailForm() override;

public slots:
    void on_pushButton_back_clicked();

private:
    std::unique_ptr<Ui::EmailForm> ui;
};

/// The process's one such page. GUI thread.
EmailForm *emailForm();
