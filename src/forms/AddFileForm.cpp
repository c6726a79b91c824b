#include "forms/AddFileForm.h"

#include "forms/CopyFile.h"
#include "forms/FileForm.h"
#include "forms/Icons.h"
#include "forms/ListTable.h"
#include "frame/Folders.h"
#include "frame/Singleton.h"
#include "platform/Volumes.h"
#include "printdata/PrintQueue.h"
#include "printdata/QueueNotice.h"
#include "printdata/SliceToImage.h"
#include "ui_AddFileForm.h"

#include <QDir>

namespace
{
enum Column { NumberColumn, NameColumn, MarkColumn };
} // namespace

AddFileForm *addFileForm()
{
    return singleton<AddFileForm>();
}

AddFileForm::AddFileForm() : ui(new Ui::AddFileForm), m_disk(noVolume)
{
    ui->setupUi(this);
    setUpList(ui->tableView, &m_model, {80, 400, 40});
    ui->pushButton_back->setIcon(pageIcon("back", IconPlace::BeforeText));
    ui->pushButton_prepage->setIcon(pageIcon("previous"));
    ui->pushButton_nextpage->setIcon(pageIcon("next"));
    ui->pushButton_addfile->setIcon(darkIcon("add"));
}

AddFileForm::~AddFileForm() = default;

void AddFileForm::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    listFiles();
}

void AddFileForm::uDiskChange(uint8_t code)
{
    m_disk = code;
    listFiles();
}

QString AddFileForm::diskFolder() const
{
    return m_disk == noVolume ? QString()
                              : volumePath(QStringLiteral("%1:\\").arg(QLatin1Char(char(m_disk))));
}

void AddFileForm::listFiles()
{
    m_entries.clear();
    const QString folder = diskFolder();
    if (!folder.isEmpty()) {
        const QStringList names = QDir(folder).entryList({QStringLiteral("*.tzl")}, QDir::Files);
        for (const QString &name : names)
            m_entries.append({name, false});
    }
    ui->label_empty->setVisible(m_entries.isEmpty());
    showPage(0);
}

void AddFileForm::showPage(int startIndex)
{
    m_model.removeRows(0, m_model.rowCount());
    for (int i = startIndex; i < m_entries.size() && i < startIndex + rowsPerPage; ++i) {
        QStandardItem *number = quietItem(QString::number(i));
        number->setTextAlignment(Qt::AlignCenter);
        m_model.appendRow({number, new QStandardItem(m_entries.at(i).name), new QStandardItem});
        showMark(i - startIndex, m_entries.at(i).chosen);
    }
    ui->label_page->setText(pageText(startIndex, m_entries.size()));
}

void AddFileForm::showMark(int row, bool chosen)
{
    m_model.item(row, MarkColumn)->setIcon(chosen ? pageIcon("check") : QIcon());
}

void AddFileForm::on_tableView_clicked(QModelIndex index)
{
    const int page = qMax(1, readPage(ui->label_page->text()).current);
    const int entry = (page - 1) * rowsPerPage + index.row();
    if (!index.isValid() || entry >= m_entries.size())
        return;
    m_entries[entry].chosen = !m_entries[entry].chosen;
    showMark(index.row(), m_entries[entry].chosen);
}

void AddFileForm::on_pushButton_nextpage_clicked()
{
    const int start = nextPageStart(readPage(ui->label_page->text()));
    if (start >= 0)
        showPage(start);
}

void AddFileForm::on_pushButton_prepage_clicked()
{
    const int start = previousPageStart(readPage(ui->label_page->text()));
    if (start >= 0)
        showPage(start);
}

void AddFileForm::on_pushButton_addfile_clicked()
{
    const QVector<Entry> entries = m_entries; // the disk may go while the first copy lets events through
    const QDir folder(diskFolder());
    for (const Entry &entry : entries) {
        if (!entry.chosen || entry.name == sliceToImage()->fileName()) // the slicer reads that one
            continue;
        if (copyFile(this, folder.filePath(entry.name), modelPath(entry.name), false)) {
            addToQueue(entry.name);
            refreshQueue(true);
        }
    }
}

void AddFileForm::on_pushButton_back_clicked()
{
    emit showWidgetInStacked(fileForm());
}
