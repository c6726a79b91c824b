#include "forms/HomeForm.h"

#include "engine/XdmControl.h"
#include "events/EventHandler.h"
#include "forms/BottleBar.h"
#include "forms/FileForm.h"
#include "forms/Icons.h"
#include "forms/MaterialForm.h"
#include "forms/StyleProperty.h"
#include "forms/TimeText.h"
#include "frame/Folders.h"
#include "frame/Singleton.h"
#include "links/BoardCommands.h"
#include "material/BackgroundService.h"
#include "material/TempCtl.h"
#include "platform/Log.h"
#include "printdata/ModelFile.h"
#include "printdata/SliceToImage.h"
#include "remote/Discovery.h"
#include "ui_HomeForm.h"

#include <QDateTime>
#include <QEvent>
#include <QJsonObject>
#include <QPainter>
#include <QPainterPath>
#include <QSettings>
#include <QUdpSocket>

namespace
{
constexpr int refreshPeriodMs = 5000;
constexpr int pictureSize = 174;
constexpr qreal pictureRadius = 97;       ///< the picture's corners stay clear of the ring
constexpr quint32 fullBottleGrams = 3600; ///< when no card tells
const QRectF ringRect(67.5, 128.5, 218, 218);
constexpr int ringWidth = 16;
constexpr int topOfRing = 90 * 16; ///< sixteenths of a degree, as QPainter counts
const QColor ringColour(0xf2, 0xa3, 0x3c);
const QColor troughColour(0x2b, 0x33, 0x3d);
} // namespace

HomeForm *homeForm()
{
    return singleton<HomeForm>();
}

HomeForm::HomeForm() : ui(new Ui::HomeForm)
{
    udpServer();
    ui->setupUi(this);
    m_boardCalls.setMaxThreadCount(1);
    setUpButtons();
    connect(&m_timer, &QTimer::timeout, this, &HomeForm::msecEvent);
    connect(xdmControl(), &PrintService::stopPrintSignals, this, &HomeForm::stopPrintSlots);
    connect(xdmControl(), &PrintService::pausePrintSingals, this,
            &HomeForm::on_pushButton_printImage_clicked);
    connect(xdmControl(), &QThread::finished, this, &HomeForm::jobThreadFinished);
    m_timer.start(refreshPeriodMs);
    ui->frame->installEventFilter(this);
    showStatus();
}

HomeForm::~HomeForm() = default;

void HomeForm::udpServer()
{
    for (QUdpSocket *socket : openDiscovery(this))
        connect(socket, &QUdpSocket::readyRead, this, &HomeForm::processPendingDatagram);
}

void HomeForm::processPendingDatagram()
{
    if (auto *socket = qobject_cast<QUdpSocket *>(sender()))
        answerScan(socket);
    else
        LOG_WARNING(QStringLiteral("udp is null"));
}

void HomeForm::setUpButtons()
{
    ui->pushButton_lock->setIcon(pageIcon("unlock", IconPlace::BeforeText));
    ui->pushButton_printStop->setIcon(pageIcon("Stop", IconPlace::BeforeText));
    setPrintIcon("Resume");
    ui->pushButton_printImage->setEnabled(true);
    ui->pushButton_printStop->setEnabled(false);
}

/// The signals come from other threads; the labels are set on this one.
void HomeForm::showStatus()
{
    ui->label_status->setText(tr("预热中... ..."));
    showWarningCount();
    connect(tempCtl(), &TempCtl::tempStatus, this, [this](int mode) {
        const QString texts[] = {tr("预热中... ..."), tr("打印中... ..."), tr("保温中... ...")};
        if (mode >= 0 && mode < 3)
            ui->label_status->setText(texts[mode]);
    });
    connect(EventHandler::instance(), &EventHandler::eventsChanged, this, &HomeForm::showWarningCount);
}

/// Calm while there is nothing to warn of.
void HomeForm::showWarningCount()
{
    const int count = EventHandler::activeEvents().size();
    ui->pushButton_warning->setText(QString::number(count));
    setStyleProperty(ui->pushButton_warning, "calm", count == 0);
    const auto icon = count == 0 ? quietIcon : pageIcon;
    ui->pushButton_warning->setIcon(icon("warnings", IconPlace::BeforeText));
}

void HomeForm::msecEvent()
{
    materialForm()->refresh();
    showBottles(backgroundService()->cards());
    const QJsonObject state = xdmControl()->printState();
    ui->label_LeftTime->setText(hoursAndMinutes(int(state.value("LeftTime").toDouble())));
    if (!state.value("Tips").toString().isEmpty() && xdmControl()->getPrintStatus() != PrintStatusIdle)
        showProgress(state);
    update();
}

void HomeForm::showBottles(const Bottles &bottles)
{
    showBottle(ui->str_progressBar, ui->label_strWeight, bottles.cards[bottles.strUse]);
    showBottle(ui->sup_progressBar, ui->label_supWeight, bottles.cards[bottles.supUse]);
}

void HomeForm::showBottle(QProgressBar *bar, QLabel *label, const CardInfo &bottle)
{
    showBar(bar, bottleBar(bottle, fullBottleGrams));
    label->setText(QStringLiteral("%1 g").arg(bottle.rest_weight));
}

void HomeForm::showProgress(const QJsonObject &state)
{
    const int printed = state.value("PrintLayer").toInt();
    const int layers = qMax(1, state.value("SumLayer").toInt(1));
    const qint64 left = qint64(state.value("LeftTime").toDouble());
    ui->label_tips->setText(state.value("Tips").toString());
    ui->label_StartTime->setText(state.value("StartTime").toString());
    ui->label_EndTime->setText(QDateTime::currentDateTime().addSecs(left).toString("yyyy-MM-dd hh:mm"));
    m_angle = float(printed * 360.0 / layers);
    ui->label_Percent->setText(QStringLiteral("%1 %").arg(qBound(0, int(printed * 100.0 / layers), 100)));
}

bool HomeForm::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint && watched->objectName() == QLatin1String("frame"))
        drawRing();
    return QWidget::eventFilter(watched, event);
}

void HomeForm::drawRing()
{
    QPainter painter(ui->frame);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(troughColour, ringWidth, Qt::SolidLine, Qt::FlatCap));
    painter.drawEllipse(ringRect);
    painter.setPen(QPen(ringColour, ringWidth, Qt::SolidLine, Qt::FlatCap));
    painter.drawArc(ringRect, topOfRing, -qRound(m_angle * 16));
}

void HomeForm::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    ui->pushButton_printImage->setEnabled(false);
    // A start that is under way keeps the model that it was given.
    const bool idle = xdmControl()->getPrintStatus() == PrintStatusIdle && !m_asking;
    const QString name = idle ? loadFile() : sliceToImage()->fileName();
    // What the slicer would not read must not have the model before it printed in its place.
    ui->pushButton_printImage->setEnabled(!name.isEmpty() && name == sliceToImage()->fileName());
    loadPicture(name);
    const int ending = name.lastIndexOf(QLatin1String(".tzl"));
    ui->label_Name->setText(ending < 0 ? name : name.left(ending));
    showWarningCount();
    msecEvent();
}

/// Makes the first waiting model the one to print; its name, or empty.
QString HomeForm::loadFile()
{
    const QString name = fileForm()->currentFile();
    if (name.isEmpty()) {
        ui->label_tips->setText(tr("请选择打印文件"));
        return name;
    }
    const bool readable = sliceToImage()->loadModelInfo(modelPath(name)) == 0;
    const QSettings settings(modelIniPath(name), QSettings::IniFormat);
    xdmControl()->resetPrintState(settings.value("printTime").toDouble());
    ui->label_EndTime->clear();
    ui->label_StartTime->clear();
    ui->label_tips->setText(readable ? QString() : tr("模型文件损坏"));
    return name;
}

void HomeForm::loadPicture(const QString &name)
{
    QPixmap model(pictureSize, pictureSize);
    if (name.isEmpty() || GetModelBmpAndIni(modelPath(name), &model) != 0 || model.isNull()) {
        ui->label_Image->clear();
        return;
    }
    QPixmap round(pictureSize, pictureSize);
    round.fill(Qt::transparent);
    QPainter painter(&round);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath circle;
    circle.addEllipse(QPointF(pictureSize / 2.0, pictureSize / 2.0), pictureRadius, pictureRadius);
    painter.setClipPath(circle);
    painter.drawPixmap((pictureSize - model.width()) / 2, (pictureSize - model.height()) / 2, model);
    painter.end();
    ui->label_Image->setPixmap(round);
}
