#include "forms/ToolForm.h"

#include "engine/HibLibrary.h"
#include "events/OperatorMessage.h"
#include "forms/CopyFile.h"
#include "forms/DebugForm.h"
#include "forms/Icons.h"
#include "forms/MachineForm.h"
#include "forms/MainWindow.h"
#include "forms/MaintainForm.h"
#include "forms/TrendForm.h"
#include "forms/UserInfoForm.h"
#include "frame/ProgramVersion.h"
#include "frame/RotatingLog.h"
#include "frame/Singleton.h"
#include "platform/Clock.h"
#include "platform/Log.h"
#include "platform/SystemControl.h"
#include "platform/Volumes.h"
#include "ui_ToolForm.h"

#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QFutureWatcher>
#include <QScopedValueRollback>
#include <QTimer>
#include <QtConcurrent>

namespace
{
const QStringList exportedLogs{QStringLiteral("pelora.log"), QStringLiteral("air.csv"),
                               QStringLiteral("temp.csv"), QStringLiteral("ydata.csv"),
                               QStringLiteral("event.csv")};
const QStringList exportedGenerations{QString(), QStringLiteral("1"), QStringLiteral("2"),
                                      QStringLiteral("3")};
const QString updatePackage = QStringLiteral("Pelora.7z"); ///< what the launcher looks for
constexpr int coolingRounds = 600; ///< seconds until the heads may be left without power
constexpr double roundMs = 1000;

/// Copies one log; whether all that it held then is on the disk.
bool exportLog(IMsgForm *form, const QString &source, const QString &target)
{
    const qint64 size = QFileInfo(source).size();
    return copyFile(form, source, target, true) && QFileInfo(target).size() >= size;
}

/// Each call waits while a page is being printed.
void setHeadsCold()
{
    for (int board = 1; board <= 3; ++board)
        for (int heater = 1; heater <= 3; ++heater)
            lockHibSetThermalSetpoint(board, 1, heater, 0);
}
} // namespace

ToolForm *toolForm()
{
    return singleton<ToolForm>();
}

ToolForm::ToolForm() : ui(new Ui::ToolForm)
{
    ui->setupUi(this);
    setUpTiles();
    uDiskChange(noVolume);
}

ToolForm::~ToolForm() = default;

void ToolForm::setUpTiles()
{
    ui->pushButton_machineInfo->setIcon(pageIcon("machine"));
    ui->pushButton_UserInfo->setIcon(pageIcon("usage"));
    ui->pushButton_Debug->setIcon(pageIcon("diagnosis"));
    ui->pushButton_3->setIcon(pageIcon("maintain"));
    ui->pushButton_Log->setIcon(pageIcon("export"));
    ui->pushButton_update->setIcon(pageIcon("update"));
    ui->pushButton_Trend->setIcon(pageIcon("trend"));
    ui->pushButton_Power->setIcon(pageIcon("power"));
}

void ToolForm::uDiskChange(uint8_t code)
{
    m_disk = code;
    const bool there = m_disk != noVolume;
    ui->pushButton_Log->setEnabled(there);
    ui->pushButton_update->setEnabled(there);
    ui->label_disk->setText(there ? QString() : tr("插入U盘后可以保存日志和更新"));
}

/// Asked once a task: the letter may go while a copy lets events through.
QString ToolForm::diskFolder() const
{
    return volumePath(QStringLiteral("%1:\\").arg(QLatin1Char(char(m_disk))));
}

void ToolForm::on_pushButton_machineInfo_clicked()
{
    mainWindow()->showWidgetInStacked(machineForm());
}

void ToolForm::on_pushButton_UserInfo_clicked()
{
    mainWindow()->showWidgetInStacked(userInfoForm());
}

void ToolForm::on_pushButton_Debug_clicked()
{
    mainWindow()->showWidgetInStacked(debugForm());
}

void ToolForm::on_pushButton_3_clicked()
{
    mainWindow()->showWidgetInStacked(maintainForm());
}

void ToolForm::on_pushButton_Trend_clicked()
{
    mainWindow()->showWidgetInStacked(trendForm());
}

void ToolForm::on_pushButton_Log_clicked()
{
    if (m_busy || m_disk == noVolume)
        return;
    const QScopedValueRollback<bool> busy(m_busy, true);
    exportLogs(diskFolder());
}

void ToolForm::exportLogs(const QString &disk)
{
    const QDir folder(QDir(disk).filePath(QStringLiteral("log")));
    if (QDir(disk).exists()) // a folder made in place of a disk that is gone would hide the next one
        folder.mkpath(QStringLiteral("."));
    int saved = 0;
    int missed = 0;
    for (const QString &generation : exportedGenerations) {
        for (const QString &log : exportedLogs) {
            const QString name = log + generation;
            if (exportLog(this, logPath(name), folder.filePath(name)))
                ++saved;
            else if (QFileInfo::exists(logPath(name)))
                ++missed;
        }
    }
    ui->label_disk->setText(missed ? tr("日志没有全部保存") : tr("已保存 %1 个日志文件").arg(saved));
}

void ToolForm::on_pushButton_update_clicked()
{
    if (m_busy || m_disk == noVolume)
        return;
    const QScopedValueRollback<bool> busy(m_busy, true);
    takeUpdates(diskFolder());
}

/// Moves a package into the installation; false when it is not there or did not arrive whole.
bool ToolForm::takePackage(const QString &source)
{
    if (!copyFile(this, source, updatePackage, false))
        return false;
    if (!QFile::remove(source))
        LOG_WARNING(QStringLiteral("remove file Err:%1").arg(source));
    return true;
}

void ToolForm::takeUpdates(const QString &disk)
{
    const QDir folder(disk);
    for (const char *name : {"Lamorel.7z", "firmware.7z"})
        if (takePackage(folder.filePath(QLatin1String(name))))
            restartSystem();
    if (!takePackage(folder.filePath(QStringLiteral("%1.7z").arg(machineModel()))))
        return;
    closeMessageForm();
    if (execMessageForm(tr("是否立即重启完成升级?"), MessageIcon::warning, MessageButtons::yesNo, QString()))
        restartSystem();
}

void ToolForm::on_pushButton_Power_clicked()
{
    if (m_busy)
        return;
    const QScopedValueRollback<bool> busy(m_busy, true);
    if (!execMessageForm(tr("是否关机，请确认，如果进入关机流程，只能断电重启"), MessageIcon::warning,
                         MessageButtons::yesNo, QString()))
        return;
    mainWindow()->setPagesEnabled(false);
    coolHeads();
    waitForCooling();
    showMessageForm(tr("请关闭电源"), MessageIcon::information, MessageButtons::none, QString());
    powerOffSystem();
}

/// Off this thread: a pass that is being printed keeps the head library for up to 30 s.
void ToolForm::coolHeads()
{
    showCooling(0);
    QEventLoop loop;
    QFutureWatcher<void> done;
    connect(&done, &QFutureWatcher<void>::finished, &loop, &QEventLoop::quit);
    done.setFuture(QtConcurrent::run(setHeadsCold));
    loop.exec();
}

void ToolForm::waitForCooling()
{
    for (int round = 0; round < coolingRounds; ++round) {
        mainWindow()->setPagesEnabled(false); // a job that came to its end has enabled them
        showCooling(round);
        QEventLoop second;
        QTimer::singleShot(qMax(1, int(roundMs / timeScale())), &second, &QEventLoop::quit);
        second.exec();
    }
}

/// Its close button lets the operator see the page beneath until the next round.
void ToolForm::showCooling(int round)
{
    showProgress(tr("电源选项"), tr("关机中,请稍后..."), float(round), float(coolingRounds));
}
