#include "forms/MaintainForm.h"

#include "events/EventHandler.h"
#include "events/OperatorMessage.h"
#include "forms/Icons.h"
#include "forms/ListTable.h"
#include "forms/MainWindow.h"
#include "forms/ToolForm.h"
#include "frame/Singleton.h"
#include "ui_MaintainForm.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QTimerEvent>

namespace
{
constexpr quint32 maintainEvent = 0x00ffff07;
constexpr int checkPeriodMs = 60000;
constexpr int rowHeight = 65;
constexpr int headerHeight = 45;

enum Column { JobColumn, RestColumn, StateColumn };

struct StateLook {
    const char *word;
    QColor colour;
};

/// How a state is told, in the order of MaintainState.
const StateLook stateLooks[] = {
    {QT_TRANSLATE_NOOP("MaintainForm", "正常"), QColor(0x4c, 0xc3, 0x8a)},
    {QT_TRANSLATE_NOOP("MaintainForm", "到期"), QColor(0xff, 0xd3, 0x4d)},
    {QT_TRANSLATE_NOOP("MaintainForm", "超期"), QColor(0xff, 0x7a, 0x7d)},
};
} // namespace

MaintainForm *maintainForm()
{
    return singleton<MaintainForm>();
}

MaintainForm::MaintainForm() : ui(new Ui::MaintainForm)
{
    ui->setupUi(this);
    ui->pushButton_back->setIcon(pageIcon("back", IconPlace::BeforeText));
    ui->pushButton_prepage->setIcon(pageIcon("up"));
    ui->pushButton_nextpage->setIcon(pageIcon("down"));
    setUpTable();
    m_plan.createFile();
    m_plan.load();
    for (int row = 0; row < maintainJobCount; ++row) {
        m_model.appendRow(
            {new QStandardItem(tr(maintainJobs[row].text)), new QStandardItem, new QStandardItem});
        showRest(row, m_plan.restPercent(row));
    }
}

MaintainForm::~MaintainForm() = default;

void MaintainForm::setUpTable()
{
    QTableView *table = ui->tableView;
    setUpList(table, &m_model, {262, 198, 92});
    m_model.setHorizontalHeaderLabels({tr("维护项目"), tr("剩余"), tr("状态")});
    table->horizontalHeader()->show();
    table->horizontalHeader()->setFixedHeight(headerHeight);
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table->horizontalHeader()->setSectionsClickable(false);
    table->setWordWrap(true);
    table->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->verticalHeader()->setMinimumSectionSize(rowHeight);
    table->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    connect(table, &QTableView::clicked, this, &MaintainForm::showToolTip);
    QScrollBar *bar = table->verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this, &MaintainForm::showScrollButtons);
    connect(bar, &QScrollBar::rangeChanged, this, &MaintainForm::showScrollButtons);
    connect(ui->pushButton_prepage, &QPushButton::clicked, this,
            [bar] { bar->triggerAction(QScrollBar::SliderPageStepSub); });
    connect(ui->pushButton_nextpage, &QPushButton::clicked, this,
            [bar] { bar->triggerAction(QScrollBar::SliderPageStepAdd); });
}

void MaintainForm::showScrollButtons()
{
    const QScrollBar *bar = ui->tableView->verticalScrollBar();
    ui->pushButton_prepage->setEnabled(bar->value() > bar->minimum());
    ui->pushButton_nextpage->setEnabled(bar->value() < bar->maximum());
}

void MaintainForm::showRest(int row, int percent)
{
    const StateLook &look = stateLooks[int(maintainState(percent))];
    const QString rest = QStringLiteral("%1% ").arg(percent) + tr("当前维护循环");
    m_model.item(row, RestColumn)->setText(rest);
    m_model.item(row, StateColumn)->setText(tr(look.word));
    for (int column : {RestColumn, StateColumn})
        m_model.item(row, column)->setForeground(look.colour);
}

void MaintainForm::startCheck()
{
    if (!m_timerId)
        m_timerId = startTimer(checkPeriodMs, Qt::CoarseTimer);
}

void MaintainForm::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == m_timerId)
        check();
}

void MaintainForm::check()
{
    bool anyDue = false;
    const int jobs = m_plan.load() ? maintainJobCount : 0; // nothing is due in a file that can't be read
    for (int row = 0; row < jobs; ++row) {
        const int percent = m_plan.restPercent(row);
        showRest(row, percent);
        const MaintainState state = maintainState(percent);
        anyDue |= state != MaintainState::InTime;
        if (state == MaintainState::Overdue)
            showMessageForm(EventHandler::eventMessage(maintainEvent), MessageIcon::critical,
                            MessageButtons::close, objectName());
    }
    if (anyDue)
        EventHandler::setEvent(maintainEvent, QString());
    else
        EventHandler::clearEvent(maintainEvent);
}

void MaintainForm::showToolTip(QModelIndex index)
{
    if (!index.isValid() ||
        !execMessageForm(tr("维护是否完成?"), MessageIcon::information, MessageButtons::yesNo, QString()))
        return;
    m_plan.setDone(index.row());
    showRest(index.row(), 100);
}

void MaintainForm::on_pushButton_back_clicked()
{
    mainWindow()->showWidgetInStacked(toolForm());
}
