#include "forms/MaintainForm.h"

#include "forms/Icons.h"
#include "forms/MainWindow.h"
#include "forms/ToolForm.h"
#include "frame/Singleton.h"
#include "ui_MaintainForm.h"

MaintainForm *maintainForm()
{
    return singleton<MaintainForm>();
}

MaintainForm::MaintainForm() : ui(new Ui::MaintainForm)
{
    ui->setupUi(this);
    ui->pushButton_back->setIcon(pageIcon("back", IconPlace::BeforeText));
}

MaintainForm::~MaintainForm() = default;

void MaintainForm::startCheck() {}

void MaintainForm::on_pushButton_back_clicked()
{
    mainWindow()->showWidgetInStacked(toolForm());
}
