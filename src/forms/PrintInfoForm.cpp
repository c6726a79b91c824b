#include "forms/PrintInfoForm.h"

#include "engine/XdmControl.h"
#include "events/OperatorMessage.h"
#include "forms/FileForm.h"
#include "forms/HomeForm.h"
#include "forms/Icons.h"
#include "forms/MainWindow.h"
#include "forms/TimeText.h"
#include "frame/Folders.h"
#include "frame/Singleton.h"
#include "printdata/ModelFile.h"
#include "printdata/SliceToImage.h"
#include "ui_PrintInfoForm.h"

#include <QScopedValueRollback>

PrintInfoForm *printInfoForm()
{
    return singleton<PrintInfoForm>();
}

PrintInfoForm::PrintInfoForm() : ui(new Ui::PrintInfoForm)
{
    ui->setupUi(this);
    ui->pushButton_back->setIcon(pageIcon("back", IconPlace::BeforeText));
    ui->pushButton_printImage->setIcon(darkIcon("Resume"));
    // Queued: the Home page says idle first.
    connect(xdmControl(), &PrintService::stopPrintSignals, this, &PrintInfoForm::enableStart,
            Qt::QueuedConnection);
}

PrintInfoForm::~PrintInfoForm() = default;

void PrintInfoForm::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    enableStart();
}

void PrintInfoForm::enableStart()
{
    const bool idle = xdmControl()->getPrintStatus() == PrintStatusIdle;
    ui->pushButton_printImage->setEnabled(idle && !m_modelName.isEmpty());
}

void PrintInfoForm::showModel(const QString &modelName)
{
    m_modelName = modelName;
    showPicture();
    showValues();
    enableStart();
}

void PrintInfoForm::showPicture()
{
    QPixmap picture;
    if (fileForm()->showModelView(picture, m_modelName) != 0)
        ui->label_Image->setText(tr("模型文件损坏或已删除"));
    else if (picture.isNull())
        ui->label_Image->setText(tr("没有预览图"));
    else
        ui->label_Image->setPixmap(
            picture.scaled(ui->label_Image->size(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

void PrintInfoForm::showValues()
{
    GetModelBmpAndIni(modelPath(m_modelName), nullptr); // the side file anew, when the model can be read
    const ModelSettings settings(m_modelName);
    const auto text = [&settings](const char *key) { return settings.value(QLatin1String(key)).toString(); };
    const auto worded = [](const QString &value, const QString &words) {
        return value.isEmpty() ? QStringLiteral("--") : words.arg(value);
    };
    const QString time = text("printTime");
    const QString volume =
        QStringLiteral("%1 x %2 x %3").arg(text("extentX"), text("extentY"), text("extentZ"));
    ui->label_name->setText(m_modelName);
    ui->label_printTime->setText(worded(time.isEmpty() ? time : hoursAndMinutes(int(time.toDouble())), "%1"));
    ui->label_structure->setText(worded(text("modelMaterial"), "%1 g"));
    ui->label_support->setText(worded(text("supportMaterial"), "%1 g"));
    ui->label_mode->setText(worded(text("printModeName"), "%1"));
    ui->label_layers->setText(worded(text("layerCnt"), "%1"));
    ui->label_volume->setText(text("extentX").isEmpty() ? QStringLiteral("--") : volume);
}

void PrintInfoForm::on_pushButton_printImage_clicked()
{
    enableStart(); // a job may have begun since the page was shown, and the Home page's button would pause it
    if (m_starting || !ui->pushButton_printImage->isEnabled())
        return;
    QScopedValueRollback<bool> starting(m_starting, true);
    if (sliceToImage()->loadModelInfo(modelPath(m_modelName)) != 0) {
        showMessageForm(tr("模型文件损坏或已删除，请重新添加"), MessageIcon::critical, MessageButtons::close,
                        QString());
        return;
    }
    homeForm()->on_pushButton_printImage_clicked();
    // Only now: while idle that page makes the first waiting model the one to print.
    mainWindow()->on_pushButton_home_clicked();
}

void PrintInfoForm::on_pushButton_back_clicked()
{
    mainWindow()->showWidgetInStacked(fileForm());
}
