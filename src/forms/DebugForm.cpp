#include "forms/DebugForm.h"

#include "forms/Icons.h"
#include "forms/MainWindow.h"
#include "forms/ToolForm.h"
#include "frame/Singleton.h"
#include "ui_DebugForm.h"

DebugForm *debugForm()
{
    return singleton<DebugForm>();
}

DebugForm::DebugForm() : ui(new Ui::DebugForm)
{
    ui->setupUi(this);
    ui->pushButton_back->setIcon(pageIcon("back", IconPlace::BeforeText));
}

DebugForm::~DebugForm() = default;

void DebugForm::on_pushButton_back_clicked()
{
    mainWindow()->showWidgetInStacked(toolForm());
}
