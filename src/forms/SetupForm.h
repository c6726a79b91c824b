#pragma once
// The setup page: language, and the doors to network and e-mail.

#include "forms/IMsgForm.h"

#include <QWidget>
#include <memory>

namespace Ui
{
class SetupForm;
}

/// GUI thread.
class SetupForm : public QWidget, public IMsgForm
{
    Q_OBJECT
public:
    SetupForm();
    ~SetupForm() override;

private:
    std::unique_ptr<Ui::SetupForm> ui;
};

/// The process's one such page. GUI thread.
SetupForm *setupForm();
