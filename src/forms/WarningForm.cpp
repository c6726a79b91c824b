#include "forms/WarningForm.h"

#include "forms/HomeForm.h"
#include "forms/Icons.h"
#include "forms/MainWindow.h"
#include "frame/Singleton.h"
#include "ui_WarningForm.h"

WarningForm *warningForm()
{
    return singleton<WarningForm>();
}

WarningForm::WarningForm() : ui(new Ui::WarningForm)
{
    ui->setupUi(this);
    ui->pushButton_back->setIcon(pageIcon("back", IconPlace::BeforeText));
}

WarningForm::~WarningForm() = default;

void WarningForm::on_pushButton_back_clicked()
{
    mainWindow()->showWidgetInStacked(homeForm());
}
