#include "forms/ToolForm.h"

#include "frame/Singleton.h"
#include "ui_ToolForm.h"

ToolForm *toolForm()
{
    return singleton<ToolForm>();
}

ToolForm::ToolForm() : ui(new Ui::ToolForm)
{
    ui->setupUi(this);
}

ToolForm::~ToolForm() = default;

void ToolForm::uDiskChange(uint8_t) {}
