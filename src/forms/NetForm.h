#pragma once
// The network page: address, mask and gateway of the machine's adapter.

#include "forms/IMsgForm.h"

#include <QWidget>
#include <memory>

namespace Ui
{
class NetForm;
}

/// GUI thread.
class NetForm : public QWidget, public IMsgForm
{
    Q_OBJECT
public:
    NetForm();
    ~NetForm() override;

public slots:
    void on_pushButton_back_clicked();

private:
    std::unique_ptr<Ui::NetForm> ui;
};

/// The process's one such page. GUI thread.
NetForm *netForm();
