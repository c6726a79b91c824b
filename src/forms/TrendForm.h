#pragma once
// The last 24 hours of temperatures and air pressures as curves.

#include "forms/IMsgForm.h"

#include <QWidget>
#include <memory>

namespace Ui
{
class TrendForm;
}

/// GUI thread.
class TrendForm : public QWidget, public IMsgForm
{
    Q_OBJECT
public:
    TrendForm();
    ~TrendForm() override;

public slots:
    void on_pushButton_back_clicked();

private:
    std::unique_ptr<Ui::TrendForm> ui;
};

/// The process's one such page. GUI thread.
TrendForm *trendForm();
