#include "forms/NetForm.h"

#include "forms/Icons.h"
#include "forms/MainWindow.h"
#include "forms/SetupForm.h"
#include "frame/Singleton.h"
#include "ui_NetForm.h"

NetForm *netForm()
{
    return singleton<NetForm>();
}

NetForm::NetForm() : ui(new Ui::NetForm)
{
    ui->setupUi(this);
    ui->pushButton_back->setIcon(pageIcon("back", IconPlace::BeforeText));
}

NetForm::~NetForm() = default;

void NetForm::on_pushButton_back_clicked()
{
    mainWindow()->showWidgetInStacked(setupForm());
}
