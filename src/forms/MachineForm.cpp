#include "forms/MachineForm.h"

#include "forms/Icons.h"
#include "forms/MainWindow.h"
#include "forms/ToolForm.h"
#include "frame/Singleton.h"
#include "ui_MachineForm.h"

MachineForm *machineForm()
{
    return singleton<MachineForm>();
}

MachineForm::MachineForm() : ui(new Ui::MachineForm)
{
    ui->setupUi(this);
    ui->pushButton_back->setIcon(pageIcon("back", IconPlace::BeforeText));
}

MachineForm::~MachineForm() = default;

void MachineForm::on_pushButton_back_clicked()
{
    mainWindow()->showWidgetInStacked(toolForm());
}
