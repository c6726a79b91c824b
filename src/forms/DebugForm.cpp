#include "forms/DebugForm.h"

#include "engine/AxisMoves.h"
#include "engine/JobCodes.h"
#include "engine/MachineServices.h"
#include "engine/XdmControl.h"
#include "events/EventHandler.h"
#include "events/OperatorMessage.h"
#include "forms/Icons.h"
#include "forms/MainWindow.h"
#include "forms/OffThread.h"
#include "forms/ToolForm.h"
#include "frame/Singleton.h"
#include "links/BoardCommands.h"
#include "printdata/SliceToImage.h"
#include "ui_DebugForm.h"

#include <QScopedValueRollback>
#include <limits>

namespace
{
constexpr int smallestOffset = std::numeric_limits<qint8>::min();
constexpr int largestOffset = std::numeric_limits<qint8>::max();
} // namespace

DebugForm *debugForm()
{
    return singleton<DebugForm>();
}

DebugForm::DebugForm() : ui(new Ui::DebugForm), m_keepGoing(false)
{
    ui->setupUi(this);
    m_worker.setMaxThreadCount(1);
    ui->pushButton_back->setIcon(pageIcon("back", IconPlace::BeforeText));
    ui->pushButton_presssInk->setIcon(pageIcon("purge"));
    ui->pushButton_printDot->setIcon(pageIcon("dots"));
    ui->pushButton_pullInkStation->setIcon(pageIcon("station"));
    ui->pushButton_zTest->setIcon(pageIcon("ztest"));
    setUpNormTool();
}

DebugForm::~DebugForm() = default;

void DebugForm::on_pushButton_back_clicked()
{
    mainWindow()->showWidgetInStacked(toolForm());
}

/// A finger that presses twice, or a press that was on its way when the form came up, starts nothing more.
void DebugForm::alone(void (DebugForm::*routine)())
{
    if (m_running)
        return;
    QScopedValueRollback<bool> running(m_running, true);
    (this->*routine)();
}

void DebugForm::on_pushButton_presssInk_clicked()
{
    alone(&DebugForm::pressInk);
}

void DebugForm::on_pushButton_zTest_clicked()
{
    alone(&DebugForm::testZ);
}

void DebugForm::on_pushButton_printDot_clicked()
{
    alone(&DebugForm::printDot);
}

void DebugForm::on_pushButton_pullInkStation_clicked()
{
    alone(&DebugForm::pullInkStation);
}

// What is said. A form that belongs to someone else refuses, which reads as No.

bool DebugForm::ask(const QString &question)
{
    return execMessageForm(question, MessageIcon::information, MessageButtons::yesNo, QString());
}

bool DebugForm::tell(const QString &text)
{
    return showMessageForm(text, MessageIcon::information, MessageButtons::none, QString());
}

bool DebugForm::tellPreparing()
{
    return tell(tr("请稍后，准备中..."));
}

void DebugForm::fail(const QString &text)
{
    execMessageForm(text, MessageIcon::critical, MessageButtons::close, QString());
}

void DebugForm::fail(int code)
{
    execMessageForm(quint32(code), EventHandler::eventMessage(quint32(code)), MessageIcon::critical,
                    MessageButtons::close, QString());
}

// The routines

void DebugForm::runUntilClosed(const Run &run)
{
    bool told = false;
    QEventLoop ended;
    QFutureWatcher<ServiceEnd> task;
    connect(&task, &QFutureWatcher<ServiceEnd>::finished, &ended, &QEventLoop::quit);
    connect(&task, &QFutureWatcher<ServiceEnd>::finished, this, [&] {
        if (!m_keepGoing || task.result().code == JobCode::done)
            return;
        told = true; // takes the place of the form that ends the run: closing it does
        const auto code = quint32(task.result().code);
        showMessageForm(code, EventHandler::eventMessage(code), MessageIcon::critical, MessageButtons::close,
                        QString());
    });
    m_keepGoing = true;
    task.setFuture(QtConcurrent::run(&m_worker, run.rounds, std::cref(m_keepGoing)));
    execMessageForm(run.open, MessageIcon::information, MessageButtons::close, QString());
    m_keepGoing = false;
    if (!task.isFinished()) {
        tell(run.ending);
        ended.exec();
    }
    const ServiceEnd end = task.result();
    if (end.code != JobCode::done && !told)
        fail(end.code);
    const QString done = run.done.contains(QLatin1String("%1")) ? run.done.arg(end.rounds) : run.done;
    showMessageForm(done, MessageIcon::information, MessageButtons::close, QString());
}

bool DebugForm::askStation()
{
    return ask(tr("墨站是否正确放置，运动范围内是否清洁"));
}

/// The ink station's routines: X passes the station, and the stack must not come along.
bool DebugForm::prepareStation()
{
    if (!isStationConfigured())
        return fail(JobCode::configurationLost), false;
    if (const int error = offThread(approachStation))
        return fail(tr("X轴错误(%1)").arg(error)), false;
    if (offThread(hasStackStayed)) {
        fail(JobCode::inkStackFault);
        tellPreparing();
        if (!offThread(releaseStack)) // homing would drag it over the bed
            return fail(JobCode::inkStackFault), false;
    }
    const int code = offThread(settleZ);
    if (code != JobCode::done)
        fail(code);
    return code == JobCode::done;
}

void DebugForm::pullInkStation()
{
    if (!askStation())
        return;
    tellPreparing();
    if (prepareStation())
        runUntilClosed(
            {runStation, tr("关闭弹窗后完成测试"), tr("请稍后，测试即将完成"), tr("测试完成(%1)")});
}

/// Dots are as wide as the loaded model's pictures, need something to fall on, and cold heads cannot fire.
bool DebugForm::mayPrintDots()
{
    if (sliceToImage()->fileName().isEmpty())
        return fail(tr("请选择打印文件")), false;
    if (offThread(isPlatformReady) == 0)
        return fail(tr("平台未放好")), false;
    if (!jobServices().isTempReady())
        return fail(JobCode::heating), false;
    return true;
}

void DebugForm::printDot()
{
    if (!askStation())
        return;
    tellPreparing();
    if (mayPrintDots() && prepareStation())
        runUntilClosed({runDots, tr("关闭弹窗后完成测试"), tr("请稍后，测试即将完成"), tr("测试完成(%1)")});
}

void DebugForm::testZ()
{
    if (!ask(tr("是否运动测试？")) ||
        !ask(tr("测试时注意人工观察是否异常，Z轴即将回零进行0~145000往复运动？")))
        return;
    runUntilClosed({runZ, tr("关闭弹窗后完成测试"), tr("请稍后，运动测试即将完成"),
                    tr("测试完成，请拷贝日志查看测试次数")});
}

void DebugForm::pressInk()
{
    if (xdmControl()->getPrintStatus() != PrintStatusIdle) {
        execMessageForm(tr("机器处于非空闲状态(打印/暂停)，无法进行此流程"), MessageIcon::information,
                        MessageButtons::close, QString());
        return;
    }
    if (!tellPreparing())
        return;
    if (!offThread(isAtPurgeHeight)) {
        if (!ask(tr("请确认喷头下方没有异物，否则将损坏喷头，Z轴即将上下运动？")))
            return;
        tell(tr("Z 轴运动中，请注意观察"));
        if (const int code = offThread(moveToPurgeHeight))
            return fail(code);
    }
    if (ask(tr("喷头下方是否放置容器，即将开始挤蜡？")))
        runUntilClosed({runPurge, tr("是否取消挤蜡？"), tr("请稍后，挤蜡即将完成"), tr("挤蜡完成")});
}

// The norm values

void DebugForm::setUpNormTool()
{
    m_normHeads.addButton(ui->pushButton_head1, 1);
    m_normHeads.addButton(ui->pushButton_head2, 2);
    m_normHeads.addButton(ui->pushButton_head3, 3);
    m_normColors.addButton(ui->pushButton_normSupport, 1);
    m_normColors.addButton(ui->pushButton_normStructure, 2);
    ui->toolButton_minus->setIcon(pageIcon("minus"));
    ui->toolButton_plus->setIcon(pageIcon("add"));
}

void DebugForm::changeOffset(int step)
{
    m_normOffset = qBound(smallestOffset, m_normOffset + step, largestOffset);
    ui->label_offset->setText(QString::number(m_normOffset));
}

void DebugForm::on_toolButton_minus_clicked()
{
    changeOffset(-1);
}

void DebugForm::on_toolButton_plus_clicked()
{
    changeOffset(1);
}

/// `question` names head and wax by %1 and %2.
void DebugForm::workNormValues(NormOperation operation, const QString &question)
{
    if (m_running)
        return;
    QScopedValueRollback<bool> running(m_running, true);
    const int board = m_normHeads.checkedId();
    const int color = m_normColors.checkedId();
    const int offset = m_normOffset;
    if (!ask(question.arg(board).arg(m_normColors.checkedButton()->text())))
        return;
    if (xdmControl()->getPrintStatus() != PrintStatusIdle)
        return fail(tr("打印时不能读写归一化值"));
    tellPreparing();
    const int result =
        offThread([=] { return testMethodforAlteringNormValues(board, color, operation, offset); });
    if (result != 0)
        return fail(tr("归一化值读写失败(%1)，请查看日志").arg(result));
    showMessageForm(tr("归一化值读写完成"), MessageIcon::information, MessageButtons::close, QString());
}

void DebugForm::on_pushButton_normEdit_clicked()
{
    workNormValues(NormOperation::Edit, tr("将喷头%1 %2的归一化值加上偏移量，存为修改值？"));
}

void DebugForm::on_pushButton_normOriginal_clicked()
{
    workNormValues(NormOperation::LoadOriginal, tr("将原始归一化值写入喷头%1 %2？"));
}

void DebugForm::on_pushButton_normEdited_clicked()
{
    workNormValues(NormOperation::LoadEdited, tr("将修改后的归一化值写入喷头%1 %2？"));
}
