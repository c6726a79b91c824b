#include "forms/PrintInfoForm.h"

#include "forms/FileForm.h"
#include "forms/Icons.h"
#include "forms/MainWindow.h"
#include "frame/Singleton.h"
#include "ui_PrintInfoForm.h"

PrintInfoForm *printInfoForm()
{
    return singleton<PrintInfoForm>();
}

PrintInfoForm::PrintInfoForm() : ui(new Ui::PrintInfoForm)
{
    ui->setupUi(this);
    ui->pushButton_back->setIcon(pageIcon("back", IconPlace::BeforeText));
}

PrintInfoForm::~PrintInfoForm() = default;

void PrintInfoForm::showModel(const QString &) {}

void PrintInfoForm::on_pushButton_back_clicked()
{
    mainWindow()->showWidgetInStacked(fileForm());
}
