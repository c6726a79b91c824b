#include "forms/AddFileForm.h"

#include "events/OperatorMessage.h"
#include "forms/CopyFile.h"
#include "forms/FileForm.h"
#include "forms/Icons.h"
#include "forms/ListTable.h"
#include "frame/Folders.h"
#include "frame/Singleton.h"
#include "platform/Volumes.h"
#include "printdata/ModelFile.h"
#include "printdata/PrintQueue.h"
#include "printdata/QueueNotice.h"
#include "printdata/SliceToImage.h"
#include "ui_AddFileForm.h"

#include <QDir>
#include <QScopedValueRollback>

namespace
{
enum Column { NumberColumn, NameColumn, MarkColumn };
constexpr int mostTroublesNamed = 4; ///< the message form has room for them
constexpr int longestName = 24;

/// The beginning and the end of a name tell files apart.
QString shortened(const QString &name)
{
    return name.size() <= longestName
               ? name
               : name.left(longestName / 2) + QStringLiteral("…") + name.right(longestName / 2);
}
} // namespace

AddFileForm *addFileForm()
{
    return singleton<AddFileForm>();
}

AddFileForm::AddFileForm()
    : ui(new Ui::AddFileForm), m_checked(pageIcon("check")), m_unchecked(pageIcon("uncheck")),
      m_disk(noVolume)
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

int AddFileForm::pageStart() const
{
    return qMax(0, readPage(ui->label_page->text()).current - 1) * rowsPerPage;
}

void AddFileForm::showMark(int row, bool chosen)
{
    m_model.item(row, MarkColumn)->setIcon(chosen ? m_checked : m_unchecked);
}

void AddFileForm::on_tableView_clicked(QModelIndex index)
{
    const int entry = pageStart() + index.row();
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

/// Brings one file in; what the operator is told when that did not go well, else empty.
QString AddFileForm::addModel(const QString &path, const QString &name)
{
    if (name == sliceToImage()->fileName()) // the slicer reads that one
        return tr("正在使用，未添加");
    if (!isModelName(name))
        return tr("文件名无效，未添加");
    const bool copied = copyFile(this, path, modelPath(name), false);
    if (copied)
        addToQueue(name);
    else if (!QFile::exists(modelPath(name))) // a model of that name was being replaced
        removeModel(name);
    refreshQueue(true);
    if (!copied)
        return tr("复制失败，请检查U盘和磁盘空间");
    return GetModelBmpAndIni(modelPath(name), nullptr) == 0 ? QString() : tr("文件损坏，无法打印");
}

/// A walk without trouble says nothing: its marks are gone.
void AddFileForm::tellTroubles(int added, const QStringList &troubles)
{
    if (troubles.isEmpty())
        return;
    QStringList lines{tr("%1个文件已添加，%2个有问题：").arg(added).arg(troubles.size())};
    lines += troubles.mid(0, mostTroublesNamed);
    if (troubles.size() > mostTroublesNamed)
        lines += QStringLiteral("...");
    showMessageForm(lines.join(QLatin1Char('\n')), MessageIcon::warning, MessageButtons::close, QString());
}

void AddFileForm::on_pushButton_addfile_clicked()
{
    if (m_adding)
        return;
    QScopedValueRollback<bool> adding(m_adding, true);
    const QVector<Entry> entries = m_entries; // the disk may go while the first copy lets events through
    const QDir folder(diskFolder());
    QSet<QString> added;
    QStringList troubles;
    for (const Entry &entry : entries) {
        if (!entry.chosen)
            continue;
        const QString trouble = addModel(folder.filePath(entry.name), entry.name);
        if (trouble.isEmpty())
            added += entry.name;
        else
            troubles += QStringLiteral("%1：%2").arg(shortened(entry.name), trouble);
    }
    unmark(added); // what failed stays marked, for another try
    tellTroubles(added.size(), troubles);
}

void AddFileForm::unmark(const QSet<QString> &names)
{
    for (Entry &entry : m_entries)
        entry.chosen = entry.chosen && !names.contains(entry.name);
    showPage(pageStart());
}

void AddFileForm::on_pushButton_back_clicked()
{
    emit showWidgetInStacked(fileForm());
}
