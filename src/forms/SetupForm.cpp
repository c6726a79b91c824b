#include "forms/SetupForm.h"

#include "frame/Singleton.h"
#include "ui_SetupForm.h"

SetupForm *setupForm()
{
    return singleton<SetupForm>();
}

SetupForm::SetupForm() : ui(new Ui::SetupForm)
{
    ui->setupUi(this);
}

SetupForm::~SetupForm() = default;
