#include "forms/FileForm.h"

#include "forms/AddFileForm.h"
#include "forms/CopyFile.h"
#include "forms/Icons.h"
#include "forms/ListTable.h"
#include "forms/PrintInfoForm.h"
#include "frame/Folders.h"
#include "frame/Singleton.h"
#include "platform/Volumes.h"
#include "printdata/ModelFile.h"
#include "printdata/QueueNotice.h"
#include "ui_FileForm.h"

namespace
{
constexpr int lastRowOfPage = rowsPerPage - 1;
enum Column { NumberColumn, NameColumn, EmptyColumn, TimeColumn, DetailsColumn };
} // namespace

FileForm *fileForm()
{
    return singleton<FileForm>();
}

FileForm::FileForm() : ui(new Ui::FileForm)
{
    ui->setupUi(this);
    setUpList(ui->tableView, &m_model, {60, 230, 10, 208, 75});
    ui->pushButtonWaitPrint->setChecked(true);
    ui->toolButton_fileup->setIcon(pageIcon("up"));
    ui->toolButton_filedown->setIcon(pageIcon("down"));
    ui->toolButton_filetop->setIcon(pageIcon("top"));
    ui->toolButton_delfile->setIcon(pageIcon("delete"));
    ui->pushButton_prepage->setIcon(pageIcon("previous"));
    ui->pushButton_nextpage->setIcon(pageIcon("next"));
    ui->pushButton_reprint->setIcon(pageIcon("reprint", IconPlace::BeforeText));
    ui->pushButton_addfile->setIcon(darkIcon("add"));
    ui->pushButton_addfile->hide(); // until a disk comes
    setQueueRefresh([this] { QMetaObject::invokeMethod(this, &FileForm::showTab, Qt::QueuedConnection); });
}

FileForm::~FileForm() = default;

void FileForm::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    showTab();
}

/// The tab's status in the queue; the first checked one counts.
int FileForm::status() const
{
    if (ui->pushButtonComplete->isChecked())
        return QueuePrinted;
    if (ui->pushButtonWaitPrint->isChecked())
        return QueueWaiting;
    return ui->pushButtonAbort->isChecked() ? QueueAborted : QueueWaiting;
}

void FileForm::refresh(bool changed)
{
    setQueueChanged(changed);
    showTab();
}

void FileForm::showTab()
{
    for (QPushButton *tab : {ui->pushButtonComplete, ui->pushButtonWaitPrint, ui->pushButtonAbort}) {
        if (tab->isChecked()) {
            chooseTab(tab);
            return;
        }
    }
    updateUiFileLIst(0);
}

void FileForm::chooseTab(QPushButton *chosen)
{
    for (QPushButton *tab : {ui->pushButtonWaitPrint, ui->pushButtonComplete, ui->pushButtonAbort})
        tab->setChecked(tab == chosen);
    updateUiFileLIst(0);
}

void FileForm::on_pushButtonWaitPrint_clicked()
{
    chooseTab(ui->pushButtonWaitPrint);
}

void FileForm::on_pushButtonComplete_clicked()
{
    chooseTab(ui->pushButtonComplete);
}

void FileForm::on_pushButtonAbort_clicked()
{
    chooseTab(ui->pushButtonAbort);
}

void FileForm::updateUiFileLIst(uint8_t startIndex)
{
    if (!ui->tableView->isVisible())
        return;
    const int tab = status();
    const QList<QueueRow> rows = queueRows(tab);
    m_model.removeRows(0, m_model.rowCount());
    for (int i = startIndex; i < rows.size() && i < startIndex + rowsPerPage; ++i)
        addRow(i, rows.at(i), tab == QueueWaiting);
    ui->label_page->setText(pageText(startIndex, rows.size()));
}

void FileForm::addRow(int number, const QueueRow &row, bool waiting)
{
    const QString numberText = QString::number(number);
    QStandardItem *numberItem = quietItem(numberText);
    numberItem->setTextAlignment(Qt::AlignCenter);
    auto *details = new QStandardItem(pageIcon("details"), numberText);
    m_model.appendRow({numberItem, new QStandardItem(row.modelName), new QStandardItem,
                       quietItem(waiting ? row.createTime : row.endTime), details});
}

int FileForm::selectedRow() const
{
    const QModelIndexList rows = ui->tableView->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

QString FileForm::selectedName() const
{
    const int row = selectedRow();
    const QString name = row < 0 ? QString() : m_model.item(row, NameColumn)->text();
    return name.trimmed().isEmpty() ? QString() : name;
}

int FileForm::pageStart() const
{
    return qMax(0, readPage(ui->label_page->text()).current - 1) * rowsPerPage;
}

void FileForm::on_pushButton_nextpage_clicked()
{
    const int start = nextPageStart(readPage(ui->label_page->text()));
    if (start >= 0)
        updateUiFileLIst(uint8_t(start));
}

void FileForm::on_pushButton_prepage_clicked()
{
    const int start = previousPageStart(readPage(ui->label_page->text()));
    if (start >= 0)
        updateUiFileLIst(uint8_t(start));
}

void FileForm::on_toolButton_fileup_clicked()
{
    const int row = selectedRow();
    const QString name = selectedName();
    if (name.isEmpty())
        return;
    moveRow(name, true, status());
    setQueueChanged(true);
    if (row == 0) { // the row went to the page before
        on_pushButton_prepage_clicked();
        ui->tableView->selectRow(lastRowOfPage);
        return;
    }
    updateUiFileLIst(uint8_t(pageStart()));
    ui->tableView->selectRow(row - 1);
}

void FileForm::on_toolButton_filedown_clicked()
{
    const int row = selectedRow();
    const QString name = selectedName();
    if (name.isEmpty())
        return;
    moveRow(name, false, status());
    setQueueChanged(true);
    if (row >= lastRowOfPage) { // the row went to the next page
        on_pushButton_nextpage_clicked();
        ui->tableView->selectRow(0);
        return;
    }
    updateUiFileLIst(uint8_t(pageStart()));
    ui->tableView->selectRow(qMin(row + 1, m_model.rowCount() - 1));
}

void FileForm::on_toolButton_filetop_clicked()
{
    const QString name = selectedName();
    if (name.isEmpty())
        return;
    moveToTop(name, status());
    refresh(true);
    ui->tableView->selectRow(0);
}

void FileForm::on_toolButton_delfile_clicked()
{
    const QString name = selectedName();
    if (name.isEmpty())
        return;
    removeModel(name);
    refresh(true);
}

void FileForm::on_pushButton_reprint_clicked()
{
    const QString name = selectedName();
    if (name.isEmpty() || ui->pushButtonWaitPrint->isChecked())
        return;
    reprintModel(name);
    refresh(true);
    ui->tableView->selectRow(0);
}

int FileForm::showModelView(QPixmap &pixmap, QString fileName)
{
    return readModelView(modelPath(fileName), &pixmap);
}

void FileForm::on_tableView_clicked(QModelIndex index)
{
    if (index.column() != DetailsColumn || index.row() >= m_model.rowCount())
        return;
    printInfoForm()->showModel(m_model.item(index.row(), NameColumn)->text());
    emit showWidgetInStacked(printInfoForm());
}

void FileForm::uDiskChange(uint8_t code)
{
    ui->pushButton_addfile->setVisible(code != noVolume);
}

void FileForm::on_pushButton_addfile_clicked()
{
    emit showWidgetInStacked(addFileForm());
}

bool FileForm::copyFile(const QString &src, const QString &dst, bool keepAsIs)
{
    return ::copyFile(this, src, dst, keepAsIs);
}
