// What the buttons of the home page do.

#include "engine/XdmControl.h"
#include "events/OperatorMessage.h"
#include "forms/FileForm.h"
#include "forms/HomeForm.h"
#include "forms/Icons.h"
#include "forms/MainWindow.h"
#include "forms/MsgForm.h"
#include "forms/WarningForm.h"
#include "links/BoardCommands.h"
#include "platform/Log.h"
#include "printdata/SliceToImage.h"
#include "ui_HomeForm.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFutureWatcher>
#include <QtConcurrent>

namespace
{
constexpr double warnBelowGB = 120;
constexpr double refuseBelowGB = 80; ///< a long job's layers do not fit
constexpr int rootLength = 3;        ///< "D:/"
} // namespace

DiskVerdict judgeDisk(const QString &root, const DiskSpace &space)
{
    if (root.size() > 2 && root.contains(QLatin1String("C:")))
        return {false, QCoreApplication::translate("HomeForm", "请移动到 非系统磁盘")};
    LOG_WARNING(QStringLiteral("disk total=%1,available=%2").arg(space.totalGB).arg(space.availableGB));
    if (space.availableGB >= warnBelowGB)
        return {};
    return {space.availableGB >= refuseBelowGB,
            QCoreApplication::translate("HomeForm", "磁盘空间不足，总共: %1GB,已用: %2 GB 请及时清理模型")
                .arg(space.totalGB, 0, 'f', 2)
                .arg(space.availableGB, 0, 'f', 2)};
}

bool HomeForm::checkDiskSpace()
{
    const QString folder = QCoreApplication::applicationDirPath();
    const DiskVerdict verdict = judgeDisk(folder.left(rootLength), diskSpace(folder));
    if (!verdict.message.isEmpty())
        execMessageForm(verdict.message, MessageIcon::critical, MessageButtons::close, QString());
    return verdict.mayPrint;
}

/// Asked off this thread, since a silent board takes seconds to say nothing.
bool HomeForm::isPlatformInPlace()
{
    QEventLoop loop;
    QFutureWatcher<int> answer;
    connect(&answer, &QFutureWatcher<int>::finished, &loop, &QEventLoop::quit);
    answer.setFuture(QtConcurrent::run(&m_boardCalls, isPlatformReady));
    m_asking = true;
    loop.exec();
    m_asking = false;
    return answer.result() != 0;
}

/// A message that came up since the press would refuse the questions of the start.
void HomeForm::waitMessageClosed()
{
    QEventLoop loop;
    connect(msgForm(), &MsgForm::closed, &loop, &QEventLoop::quit);
    m_asking = true;
    while (msgForm()->isTaken())
        loop.exec();
    m_asking = false;
}

void HomeForm::setPrintIcon(const QString &name)
{
    ui->pushButton_printImage->setIcon(darkIcon(name));
    const bool paused = xdmControl()->getPrintStatus() == PrintStatusPaused;
    ui->pushButton_printImage->setText(name == QLatin1String("Pause") ? tr("暂停")
                                       : paused                       ? tr("继续")
                                                                      : tr("开始打印"));
    update();
}

void HomeForm::on_pushButton_printImage_clicked()
{
    if (m_asking || !checkDiskSpace())
        return;
    const int status = xdmControl()->getPrintStatus();
    if (status == PrintStatusPrinting) {
        xdmControl()->setPrintStatus(PrintStatusPaused);
        setPrintIcon("Resume");
        return;
    }
    if (!isPlatformInPlace()) {
        showMessageForm(tr("平台未放好"), MessageIcon::critical, MessageButtons::close, QString());
        return;
    }
    if (status == PrintStatusIdle)
        waitMessageClosed();
    if (xdmControl()->getPrintStatus() != status)
        return; // the job was stopped or came to its end while the board was asked
    if (status == PrintStatusIdle && !startJob())
        return;
    xdmControl()->setPrintStatus(PrintStatusPrinting);
    setPrintIcon("Pause");
}

bool HomeForm::startJob()
{
    for (const QString &question : {tr("平台是否为空?"), tr("清空废料箱")})
        if (!execMessageForm(question, MessageIcon::information, MessageButtons::yesNo, QString()))
            return false;
    if (!sliceToImage()->waitForStarted() || !sliceToImage()->isRunning()) {
        showMessageForm(0u, QStringLiteral("切片失败"), MessageIcon::critical, MessageButtons::close,
                        QString());
        return false;
    }
    ui->pushButton_printStop->setEnabled(true);
    m_jobShown = true;
    xdmControl()->start();
    return true;
}

void HomeForm::on_pushButton_printStop_clicked()
{
    if (xdmControl()->getPrintStatus() == PrintStatusIdle ||
        !execMessageForm(tr("是否中止打印"), MessageIcon::warning, MessageButtons::yesNo, QString()))
        return;
    if (xdmControl()->getPrintStatus() == PrintStatusIdle)
        return;                           // the job came to its end while the question was open
    mainWindow()->setPagesEnabled(false); // until the job's thread has wound down
    xdmControl()->setPrintStatus(PrintStatusIdle);
}

void HomeForm::stopPrintSlots()
{
    m_jobShown = false;
    mainWindow()->setPagesEnabled(true);
    ui->pushButton_printStop->setEnabled(false);
    xdmControl()->setPrintStatus(PrintStatusIdle);
    setPrintIcon("Resume");
    sliceToImage()->closeProcess();
    fileForm()->refresh(true);
    m_angle = 0;
    ui->label_Percent->setText(QStringLiteral("0 %"));
}

/// A job that ended without saying so (refused at its start) would leave the page waiting for ever.
void HomeForm::jobThreadFinished()
{
    if (m_jobShown && !xdmControl()->isRunning())
        stopPrintSlots();
}

void HomeForm::on_pushButton_lock_clicked()
{
    m_locked = m_locked ? 0 : 1;
    QtConcurrent::run(&m_boardCalls, ctlFrontDoor, quint8(m_locked));
    ui->pushButton_lock->setIcon(pageIcon(m_locked ? "lock" : "unlock", IconPlace::BeforeText));
}

void HomeForm::on_pushButton_warning_clicked()
{
    mainWindow()->showWidgetInStacked(warningForm());
}
