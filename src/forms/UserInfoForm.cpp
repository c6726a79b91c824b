#include "forms/UserInfoForm.h"

#include "forms/Icons.h"
#include "forms/MainWindow.h"
#include "forms/ToolForm.h"
#include "frame/JsonConfig.h"
#include "frame/Singleton.h"
#include "ui_UserInfoForm.h"

namespace
{
/// getValue, not getFloat: the layers of a machine's life outgrow a float's digits.
QString counter(const char *key, int decimals)
{
    return QString::number(useInfoConfig()->getValue(QLatin1String(key)).toDouble(), 'f', decimals);
}
} // namespace

UserInfoForm *userInfoForm()
{
    return singleton<UserInfoForm>();
}

UserInfoForm::UserInfoForm() : ui(new Ui::UserInfoForm)
{
    ui->setupUi(this);
    ui->pushButton_back->setIcon(pageIcon("back", IconPlace::BeforeText));
}

UserInfoForm::~UserInfoForm() = default;

void UserInfoForm::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    ui->label_SystemTotalRunTime->setText(QStringLiteral("%1 d").arg(counter("SystemTotalRunTime", 1)));
    ui->label_printTotalTime->setText(QStringLiteral("%1 h").arg(counter("PrintTotalTime", 1)));
    ui->label_SystemSingleRunTime->setText(QStringLiteral("%1 h").arg(counter("SystemSingleRunTime", 1)));
    ui->label_usedStrWeight->setText(QStringLiteral("%1 KG").arg(counter("UsedStructMaterialWeight", 2)));
    ui->label_usedSupWeight->setText(QStringLiteral("%1 KG").arg(counter("UsedSupportMaterialWeight", 2)));
    ui->label_PrintingTotalLayer->setText(counter("PrintingTotalLayer", 0));
}

void UserInfoForm::on_pushButton_back_clicked()
{
    mainWindow()->showWidgetInStacked(toolForm());
}
