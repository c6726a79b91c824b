#include "forms/TrendForm.h"

#include "forms/Icons.h"
#include "forms/MainWindow.h"
#include "forms/ToolForm.h"
#include "frame/Singleton.h"
#include "ui_TrendForm.h"

TrendForm *trendForm()
{
    return singleton<TrendForm>();
}

TrendForm::TrendForm() : ui(new Ui::TrendForm)
{
    ui->setupUi(this);
    ui->pushButton_back->setIcon(pageIcon("back", IconPlace::BeforeText));
}

TrendForm::~TrendForm() = default;

void TrendForm::on_pushButton_back_clicked()
{
    mainWindow()->showWidgetInStacked(toolForm());
}
