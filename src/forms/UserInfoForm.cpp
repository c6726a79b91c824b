#include "forms/UserInfoForm.h"

#include "forms/Icons.h"
#include "forms/MainWindow.h"
#include "forms/ToolForm.h"
#include "frame/Singleton.h"
#include "ui_UserInfoForm.h"

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

void UserInfoForm::on_pushButton_back_clicked()
{
    mainWindow()->showWidgetInStacked(toolForm());
}
