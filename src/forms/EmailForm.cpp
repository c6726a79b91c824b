#include "forms/EmailForm.h"

#include "forms/Icons.h"
#include "forms/MainWindow.h"
#include "forms/SetupForm.h"
#include "frame/Singleton.h"
#include "ui_EmailForm.h"

EmailForm *emailForm()
{
    return singleton<EmailForm>();
}

EmailForm::EmailForm() : ui(new Ui::EmailForm)
{
    ui->setupUi(this);
    ui->pushButton_back->setIcon(pageIcon("back", IconPlace::BeforeText));
}

EmailForm::~EmailForm() = default;

void EmailForm::on_pushButton_back_clicked()
{
    mainWindow()->showWidgetInStacked(setupForm());
}
