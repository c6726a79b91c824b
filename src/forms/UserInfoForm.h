#pragma once
// The usage counters of the machine.

#include "forms/IMsgForm.h"

#include <QWidget>
#include <memory>

namespace Ui
{
class UserInfoForm;
}

/// GUI thread.
class UserInfoForm : public QWidget, public IMsgForm
{
    Q_OBJECT
public:
    UserInfoForm();
    ~UserInfoForm() override;

public slots:
    void on_pushButton_back_clicked();

protected:
    void showEvent(QShowEvent *event) override;

private:
    std::unique_ptr<Ui::UserInfoForm> ui;
};

/// The process's one such page. GUI thread.
UserInfoForm *userInfoForm();
