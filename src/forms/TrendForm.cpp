#include "forms/TrendForm.h"

#include "events/EventHandler.h"
#include "forms/Icons.h"
#include "forms/MainWindow.h"
#include "forms/ToolForm.h"
#include "frame/JsonConfig.h"
#include "frame/Singleton.h"
#include "ui_TrendForm.h"

#include <QDateTime>
#include <QThread>
#include <QtConcurrent>

namespace
{
constexpr int readPeriodMs = 60000;
constexpr qint64 fingerMs = 15 * 60 * 1000; ///< half the time that a finger covers
constexpr int zonesPerGroup = 7;

/// The zones behind one button: those of a group of temp.csv that have names.
struct ZoneChoice {
    int group;       ///< in the order of temp.csv
    quint32 firstId; ///< event of its first zone; the low byte is the zone's number
    int zones;
};
constexpr ZoneChoice zoneChoices[] = {
    {0, 0x33101, 6}, {1, 0x33201, 5}, {2, 0x33301, 5}, {4, 0x64102, 3}, {5, 0x64302, 4}};

/// Worker. Runs when nothing else does: a job must not feel that somebody looks.
TrendData readIdly(qint64 nowMs)
{
    QThread::currentThread()->setPriority(QThread::IdlePriority);
    return readTrends(nowMs);
}

PlotCurve airCurve(const TrendData &data, int index, const QString &name, JsonConfig *config,
                   const QString &key)
{
    PlotCurve shown;
    shown.name = name;
    shown.curve = data.air[size_t(index)];
    const int set = qRound(config->getFloat(key));
    shown.constant = index < trendPressures - 1 ? -qAbs(set) : set; // set as a depth, read as a pressure
    shown.hasConstant = shown.constant != 0;
    return shown;
}
} // namespace

TrendForm *trendForm()
{
    return singleton<TrendForm>();
}

TrendForm::TrendForm() : ui(new Ui::TrendForm)
{
    ui->setupUi(this);
    ui->pushButton_back->setIcon(pageIcon("back", IconPlace::BeforeText));
    m_worker.setMaxThreadCount(1);
    int id = 0;
    for (QPushButton *button : {ui->pushButton_zone1, ui->pushButton_zone2, ui->pushButton_zone3,
                                ui->pushButton_zone4, ui->pushButton_zone5})
        m_zones.addButton(button, id++);
    m_airs.addButton(ui->pushButton_air1, 0);
    m_airs.addButton(ui->pushButton_air2, 1);
    connect(&m_zones, &QButtonGroup::idClicked, this, &TrendForm::showTemps);
    connect(&m_airs, &QButtonGroup::idClicked, this, &TrendForm::showAir);
    for (TrendPlot *plot : {ui->plotTemp, ui->plotAir})
        connect(plot, &TrendPlot::touched, this, &TrendForm::touch);
    connect(&m_timer, &QTimer::timeout, this, &TrendForm::read);
    connect(&m_watcher, &QFutureWatcher<TrendData>::finished, this,
            [this] { show24Hours(m_watcher.result()); });
}

TrendForm::~TrendForm()
{
    m_watcher.waitForFinished();
}

void TrendForm::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    touch(0);
    read();
    m_timer.start(readPeriodMs);
}

void TrendForm::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    m_timer.stop();
}

void TrendForm::read()
{
    if (!m_watcher.isRunning())
        m_watcher.setFuture(QtConcurrent::run(&m_worker, readIdly, QDateTime::currentMSecsSinceEpoch()));
}

void TrendForm::show24Hours(const TrendData &data)
{
    m_data = data;
    for (TrendPlot *plot : {ui->plotTemp, ui->plotAir})
        plot->setTime(data.endMs, data.events);
    showTemps();
    showAir();
}

void TrendForm::showTemps()
{
    const ZoneChoice &choice = zoneChoices[qMax(0, m_zones.checkedId())];
    QVector<PlotCurve> curves;
    for (int i = 0; i < choice.zones; ++i) {
        const quint32 id = choice.firstId + quint32(i);
        PlotCurve shown;
        shown.name = EventHandler::eventMessage(id);
        shown.curve = m_data.temps[size_t(choice.group * zonesPerGroup + int(id & 0xff) - 1)];
        shown.hasSets = true;
        curves << shown;
    }
    ui->plotTemp->setCurves(curves, QStringLiteral(" °C"));
}

void TrendForm::showAir()
{
    QVector<PlotCurve> curves;
    if (m_airs.checkedId() <= 0) {
        for (int head = 1; head <= 3; ++head)
            curves << airCurve(m_data, head - 1, tr("结构负压%1").arg(head), airConfig(),
                               QStringLiteral("Nozzle1Str%1").arg(head));
        for (int head = 1; head <= 3; ++head)
            curves << airCurve(m_data, head + 2, tr("支撑负压%1").arg(head), airConfig(),
                               QStringLiteral("Nozzle1Sup%1").arg(head));
        curves << airCurve(m_data, trendPressures - 1, tr("正压"), airConfig(),
                           QStringLiteral("PosPressure"));
    } else {
        for (int tank = 0; tank < trendLevels; ++tank) {
            const int head = tank / 2 + 1;
            const bool isSupport = tank % 2 == 0;
            curves << airCurve(
                m_data, trendPressures + tank,
                (isSupport ? tr("喷头%1支撑液位") : tr("喷头%1结构液位")).arg(head), inkConfig(),
                QStringLiteral("NozzleFullValue,Nozzle%1_%2").arg(head).arg(isSupport ? 1 : 3));
        }
    }
    ui->plotAir->setCurves(curves, QString());
}

/// Shows the values of that time and the events about it; 0: the newest values.
void TrendForm::touch(qint64 timeMs)
{
    ui->plotTemp->setCursorTime(timeMs);
    ui->plotAir->setCursorTime(timeMs);
    if (timeMs == 0) {
        ui->label_events->setText(tr("触摸曲线查看该时刻的数值和事件"));
        return;
    }
    const auto clock = [](qint64 ms) {
        return QDateTime::fromMSecsSinceEpoch(ms).toString(QStringLiteral("hh:mm"));
    };
    QStringList lines{clock(timeMs)};
    for (const TrendEvent &event : qAsConst(m_data.events))
        if (qAbs(event.timeMs - timeMs) <= fingerMs)
            lines << clock(event.timeMs) + QLatin1Char(' ') + event.text;
    ui->label_events->setText(lines.size() > 1 ? lines.mid(1).join(QLatin1Char('\n')) : lines.first());
}

void TrendForm::on_pushButton_back_clicked()
{
    mainWindow()->showWidgetInStacked(toolForm());
}
