#include "forms/MachineForm.h"

#include "forms/Icons.h"
#include "forms/MainWindow.h"
#include "forms/StartCheck.h"
#include "forms/ToolForm.h"
#include "frame/ProgramVersion.h"
#include "frame/Singleton.h"
#include "platform/Adapters.h"
#include "platform/MachineId.h"
#include "ui_MachineForm.h"

#include <QtConcurrent>

namespace
{
/// A dash stands for what the machine does not know.
void showValue(QLabel *label, const QString &value)
{
    label->setText(value.isEmpty() ? QStringLiteral("\u2014") : value);
}
} // namespace

MachineForm *machineForm()
{
    return singleton<MachineForm>();
}

MachineForm::MachineForm() : ui(new Ui::MachineForm)
{
    ui->setupUi(this);
    ui->pushButton_back->setIcon(pageIcon("back", IconPlace::BeforeText));
    ui->label_model->setText(machineModel());
    ui->label_version->setText(programVersion());
    ui->label_buildTime->setText(
        QStringLiteral("%1 %2").arg(QLatin1String(__DATE__), QLatin1String(__TIME__)));
    showValue(ui->label_serial, machineId());
    showValue(ui->label_mac, firstWiredAdapter(adapters()).mac);
    showValue(ui->label_hib, QString());
    // off this thread: a pass that is being printed keeps the library for up to 30 s
    connect(&m_headLibrary, &QFutureWatcher<QString>::finished, this,
            [this] { showValue(ui->label_hib, m_headLibrary.result().trimmed()); });
    m_headLibrary.setFuture(QtConcurrent::run(headLibraryVersion));
}

MachineForm::~MachineForm() = default;

/// The slicer may have answered since the page was built.
void MachineForm::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    showValue(ui->label_slicer, slicerVersion());
}

void MachineForm::on_pushButton_back_clicked()
{
    mainWindow()->showWidgetInStacked(toolForm());
}
