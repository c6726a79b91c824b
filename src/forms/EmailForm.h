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
    void on_pushButton_reset_clicked();
    /// Saves, and sends a test mail.
    void on_pushButton_apply_clicked();
    void on_pushButton_visible_clicked();

signals:
    void showKeyBoard(int x, int y);

protected:
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void fill();
    void save();
    void showPassword(bool visible);

    std::unique_ptr<Ui::EmailForm> ui;
    bool m_sending = false;
};

/// The process's one such page. GUI thread.
EmailForm *emailForm();
