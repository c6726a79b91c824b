#include "forms/MainWindow.h"

#include "engine/XdmControl.h"
#include "forms/AddFileForm.h"
#include "forms/DarkScreen.h"
#include "forms/FileForm.h"
#include "forms/HomeForm.h"
#include "forms/Icons.h"
#include "forms/KeyboardRoom.h"
#include "forms/MaintainForm.h"
#include "forms/MaterialForm.h"
#include "forms/MsgForm.h"
#include "forms/SetupForm.h"
#include "forms/StartCheck.h"
#include "forms/ToolForm.h"
#include "frame/ProgramVersion.h"
#include "frame/Singleton.h"
#include "keyboard/Keyboard.h"
#include "material/BackgroundService.h"
#include "platform/Log.h"
#include "platform/SystemControl.h"
#include "remote/CTcpServer.h"
#include "ui_MainWindow.h"

#include <QApplication>
#include <QDateTime>
#include <QFile>
#include <QTimer>

namespace
{
constexpr int clockPeriodMs = 1000;

QString styleSheetText()
{
    QFile file(QStringLiteral(":/style/style.qss"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}
} // namespace

MainWindow *mainWindow()
{
    return singleton<MainWindow>();
}

MainWindow::MainWindow() : ui(new Ui::MainWindow)
{
    qApp->setStyleSheet(styleSheetText());
    ui->setupUi(this);
    setUpButtons();
    m_keyboard = new Tactil::Keyboard(this);
    m_keyboard->lower();
    new KeyboardRoom(ui->widget, m_keyboard);
    msgForm()->setParent(this);
    msgForm()->setGeometry(rect());
    msgForm()->show();
    msgForm()->lower();
    choose(ui->pushButton_fileList, fileForm());
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    ui->label_Type->setText(ui->label_Type->text() + machineModel());
    startClock();
    connectPages();
    startServices();
    maintainForm()->startCheck();
    homeForm()->setParent(ui->widget);
    homeForm()->hide();
    LOG_WARNING(QStringLiteral("ver = %1, compile_t=%2 %3")
                    .arg(programVersion(), QLatin1String(__DATE__), QLatin1String(__TIME__)));
    watchVolumes();
    new DarkScreen(this);
    auto *check = new StartCheck(this, this);
    QTimer::singleShot(0, check, &StartCheck::start); // the window comes first
}

MainWindow::~MainWindow() = default;

void MainWindow::setUpButtons()
{
    ui->pushButton_home->setIcon(choiceIcon("home"));
    ui->pushButton_fileList->setIcon(choiceIcon("queue"));
    ui->pushButton_material->setIcon(choiceIcon("material"));
    ui->pushButton_tool->setIcon(choiceIcon("tool"));
    ui->pushButton_setup->setIcon(choiceIcon("setup"));
}

void MainWindow::startClock()
{
    const auto showTime = [this] {
        const QDateTime now = QDateTime::currentDateTime();
        ui->label_Data->setText(now.toString(QStringLiteral("yyyy-MM-dd")));
        ui->label_Time->setText(now.toString(QStringLiteral("hh:mm")));
    };
    auto *timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, showTime);
    timer->start(clockPeriodMs);
    showTime();
}

void MainWindow::connectPages()
{
    connect(this, &MainWindow::sigUDiskChange, fileForm(), &FileForm::uDiskChange);
    connect(this, &MainWindow::sigUDiskChange, toolForm(), &ToolForm::uDiskChange);
    connect(this, &MainWindow::sigUDiskChange, addFileForm(), &AddFileForm::uDiskChange);
    connect(fileForm(), &FileForm::showWidgetInStacked, this, &MainWindow::showWidgetInStacked);
    connect(addFileForm(), &AddFileForm::showWidgetInStacked, this, &MainWindow::showWidgetInStacked);
}

/// The services' threads sleep until the form has taken or refused their message.
void MainWindow::startServices()
{
    const auto show = qOverload<QString, QString, int, int, QString>(&MsgForm::showMessageForm);
    connect(xdmControl(), &PrintService::MessageFormShowSig, msgForm(), show, Qt::BlockingQueuedConnection);
    connect(backgroundService(), &BackgroundService::MessageFormShowSig, msgForm(), show,
            Qt::BlockingQueuedConnection);
    tcpServer()->setParent(this);
    tcpServer()->start();
    backgroundService()->start();
}

void MainWindow::watchVolumes()
{
    connect(&m_volumes, &VolumeWatcher::arrived, this, [this](quint8 letter) {
        qDebug() << "MainWindow::nativeEventFilter"
                 << "u disk come";
        emit sigUDiskChange(letter);
    });
    connect(&m_volumes, &VolumeWatcher::removed, this, [this] {
        qDebug() << "MainWindow::nativeEventFilter"
                 << "u disk remove";
        emit sigUDiskChange(noVolume);
    });
    connect(&m_volumes, &VolumeWatcher::otherChange, this, [] { qDebug() << "USB_change"; });
    m_volumes.start();
}

void MainWindow::setPagesEnabled(bool enabled)
{
    ui->centralWidget->setEnabled(enabled);
}

void MainWindow::showWidgetInStacked(QWidget *page)
{
    // close() hides a page and leaves it alive, so that it keeps its state and gets its showEvent again
    const QList<QWidget *> pages = ui->widget->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget *shown : pages)
        shown->close();
    page->setParent(ui->widget);
    page->show();
    page->raise();
    update();
}

void MainWindow::showKeyBoard(int, int)
{
    m_keyboard->move(0, height() - m_keyboard->height());
    m_keyboard->raise();
    if (msgForm()->isTaken())
        msgForm()->raise();
    m_keyboard->edit(QApplication::focusWidget());
}

void MainWindow::choose(QToolButton *button, QWidget *page)
{
    button->setChecked(true);
    showWidgetInStacked(page);
}

void MainWindow::on_pushButton_home_clicked()
{
    choose(ui->pushButton_home, homeForm());
}

void MainWindow::on_pushButton_fileList_clicked()
{
    choose(ui->pushButton_fileList, fileForm());
}

void MainWindow::on_pushButton_material_clicked()
{
    choose(ui->pushButton_material, materialForm());
}

void MainWindow::on_pushButton_tool_clicked()
{
    choose(ui->pushButton_tool, toolForm());
}

void MainWindow::on_pushButton_setup_clicked()
{
    choose(ui->pushButton_setup, setupForm());
}

void MainWindow::closeEvent(QCloseEvent *)
{
    msgForm()->setParent(nullptr);
    LOG_WARNING(QStringLiteral("exec  close"));
    exitNow();
}
