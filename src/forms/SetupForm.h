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

public slots:
    /// Makes the language of the button that sent this the one of the next start.
    void switchLanguage();
    void on_pushButton_Net_clicked();
    void on_pushButton_Language_clicked();
    void on_pushButton_Email_clicked();

protected:
    void hideEvent(QHideEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void markLanguage();

    std::unique_ptr<Ui::SetupForm> ui;
};

/// The process's one such page. GUI thread.
SetupForm *setupForm();
