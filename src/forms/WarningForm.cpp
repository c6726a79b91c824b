#include "forms/WarningForm.h"

#include "events/EventHandler.h"
#include "events/OperatorMessage.h"
#include "forms/HomeForm.h"
#include "forms/Icons.h"
#include "forms/ListTable.h"
#include "forms/MainWindow.h"
#include "frame/Singleton.h"
#include "ui_WarningForm.h"

#include <QHeaderView>
#include <QScroller>

namespace
{
constexpr int idWidth = 130;
constexpr int textWidth = 430; ///< leaves room for the scroll bar
} // namespace

WarningForm *warningForm()
{
    return singleton<WarningForm>();
}

WarningForm::WarningForm() : ui(new Ui::WarningForm)
{
    ui->setupUi(this);
    ui->pushButton_back->setIcon(pageIcon("back", IconPlace::BeforeText));
    setUpList(ui->tableView, &m_model, {idWidth, textWidth});
    m_model.setHorizontalHeaderLabels({tr("错误代码"), tr("事件内容")});
    ui->tableView->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    ui->tableView->horizontalHeader()->setSectionsClickable(false);
    ui->tableView->horizontalHeader()->show();
    ui->tableView->setWordWrap(true);
    ui->tableView->setSelectionMode(QAbstractItemView::NoSelection);
    ui->tableView->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    ui->tableView->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    QScroller::grabGesture(ui->tableView->viewport(), QScroller::LeftMouseButtonGesture);
}

WarningForm::~WarningForm() = default;

void WarningForm::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    listEvents();
}

void WarningForm::listEvents()
{
    m_model.removeRows(0, m_model.rowCount());
    const QList<quint32> ids = EventHandler::activeEvents().keys();
    for (const quint32 id : ids) {
        m_model.appendRow({quietItem(messageTitle(id)), new QStandardItem(EventHandler::eventDetail(id))});
    }
    ui->tableView->resizeRowsToContents();
    ui->tableView->scrollToTop();
    ui->tableView->setVisible(!ids.isEmpty());
    ui->label_empty->setVisible(ids.isEmpty());
}

void WarningForm::on_pushButton_back_clicked()
{
    mainWindow()->showWidgetInStacked(homeForm());
}
