#include "forms/NetForm.h"

#include "events/OperatorMessage.h"
#include "forms/EditBoxes.h"
#include "forms/Icons.h"
#include "forms/MainWindow.h"
#include "forms/OffThread.h"
#include "forms/SetupForm.h"
#include "frame/Singleton.h"
#include "ui_NetForm.h"

namespace
{
struct FaultText {
    LanFault fault;
    const char *text;
};

const FaultText faultTexts[] = {
    {LanFault::Ip, QT_TRANSLATE_NOOP("NetForm", "IP地址无效，请检查")},
    {LanFault::Mask, QT_TRANSLATE_NOOP("NetForm", "子网掩码无效，请检查")},
    {LanFault::Gateway, QT_TRANSLATE_NOOP("NetForm", "默认网关无效或与IP地址不在同一网段，请检查")},
};
} // namespace

NetForm *netForm()
{
    return singleton<NetForm>();
}

NetForm::NetForm() : ui(new Ui::NetForm)
{
    ui->setupUi(this);
    ui->pushButton_back->setIcon(pageIcon("back", IconPlace::BeforeText));
    setUpEditBoxes(this);
    connect(this, &NetForm::showKeyBoard, this, [](int x, int y) { mainWindow()->showKeyBoard(x, y); });
}

NetForm::~NetForm() = default;

void NetForm::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    initNetwork();
}

bool NetForm::eventFilter(QObject *watched, QEvent *event)
{
    if (isEditBoxPress(watched, event))
        emit showKeyBoard(0, 0);
    return QWidget::eventFilter(watched, event);
}

void NetForm::initNetwork()
{
    initNetwork(adapters());
}

void NetForm::initNetwork(const QList<AdapterInfo> &all)
{
    const AdapterInfo adapter = firstWiredAdapter(all);
    ui->lineEdit_ip->setText(adapter.ip);
    ui->lineEdit_mask->setText(adapter.mask);
    ui->lineEdit_gateway->setText(adapter.gateway);
    ui->checkBox_dhcp->setChecked(adapter.dhcp);
    ui->label_adapter->setText(adapter.description);
    on_checkBox_dhcp_clicked();
    if (adapter.name.isEmpty())
        showMessageForm(tr("网卡未正常工作请检查网线是否正常连接，人工排查问题"), MessageIcon::critical,
                        MessageButtons::close, QString());
}

/// A lent address is not for the operator to change.
void NetForm::on_checkBox_dhcp_clicked()
{
    ui->frame_address->setDisabled(ui->checkBox_dhcp->isChecked());
}

LanAddress NetForm::entered() const
{
    return {ui->checkBox_dhcp->isChecked(), ui->lineEdit_ip->text().trimmed(),
            ui->lineEdit_mask->text().trimmed(), ui->lineEdit_gateway->text().trimmed()};
}

void NetForm::on_pushButton_Save_clicked()
{
    const LanAddress address = entered();
    const LanFault fault = lanFault(address);
    for (const FaultText &known : faultTexts) {
        if (known.fault == fault) {
            showMessageForm(tr(known.text), MessageIcon::critical, MessageButtons::close, QString());
            return;
        }
    }
    setEnabled(false);
    const LanResult result = offThread([address] { return setLanAddress(address); });
    setEnabled(true);
    showResult(result);
}

void NetForm::showResult(LanResult result)
{
    if (result == LanResult::Refused)
        showMessageForm(tr("配置已取消"), MessageIcon::critical, MessageButtons::close, QString());
    else if (result == LanResult::Done)
        showMessageForm(tr("保存成功"), MessageIcon::information, MessageButtons::close, QString());
}

void NetForm::on_pushButton_back_clicked()
{
    mainWindow()->showWidgetInStacked(setupForm());
}
