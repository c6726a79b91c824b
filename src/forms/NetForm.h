#pragma once
// The network page: address, mask and gateway of the machine's adapter.

#include "forms/IMsgForm.h"
#include "platform/Adapters.h"
#include "platform/SystemControl.h"

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

    /// Fills the page from these adapters.
    void initNetwork(const QList<AdapterInfo> &all);

public slots:
    void on_checkBox_dhcp_clicked();
    void on_pushButton_Save_clicked();
    void on_pushButton_back_clicked();
    /// Fills the page from this computer's adapters.
    void initNetwork();

signals:
    void showKeyBoard(int x, int y);

protected:
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    LanAddress entered() const;
    void showResult(LanResult result);

    std::unique_ptr<Ui::NetForm> ui;
};

/// The process's one such page. GUI thread.
NetForm *netForm();
