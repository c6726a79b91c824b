#pragma once
// The list of the events that are active, as they are when the page is opened.

#include "forms/IMsgForm.h"

#include <QStandardItemModel>
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

protected:
    void showEvent(QShowEvent *event) override;

private:
    void listEvents();

    std::unique_ptr<Ui::WarningForm> ui;
    QStandardItemModel m_model;
};

/// The process's one such page. GUI thread.
WarningForm *warningForm();
