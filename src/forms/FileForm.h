#pragma once
// The queue page: waiting, printed and aborted models, their order, and the way in for files from a disk.

#include "forms/IMsgForm.h"
#include "printdata/PrintQueue.h"

#include <QList>
#include <QModelIndex>
#include <QStandardItemModel>
#include <QWidget>
#include <memory>

namespace Ui
{
class FileForm;
}

/// GUI thread.
class FileForm : public QWidget, public IMsgForm
{
    Q_OBJECT
public:
    FileForm();
    ~FileForm() override;

    /// ModelName of the first waiting row, whatever tab is open; empty when none waits.
    QString currentFile() const { return firstWaitingModel(); }
    /// Copies a file behind a progress form; see CopyFile.h.
    bool copyFile(const QString &src, const QString &dst, bool keepAsIs);

public slots:
    /// The large preview of a model; 0, or -1 when the model cannot be read.
    int showModelView(QPixmap &pixmap, QString fileName);
    /// The last column opens the model's details.
    void on_tableView_clicked(QModelIndex index);
    /// Shows the tab anew from its first row, if the page is on screen. `changed` as in QueueNotice.h.
    void refresh(bool changed);
    /// Fills the table from row `startIndex` of the tab, if it is on screen. Eight bits: right up to row 255.
    void updateUiFileLIst(uint8_t startIndex);
    /// A disk came (its letter's code) or went (0xFF).
    void uDiskChange(uint8_t code);
    void on_pushButton_addfile_clicked();
    void on_toolButton_fileup_clicked();
    void on_toolButton_filedown_clicked();
    void on_toolButton_filetop_clicked();
    void on_toolButton_delfile_clicked();
    void on_pushButton_nextpage_clicked();
    void on_pushButton_prepage_clicked();
    void on_pushButton_reprint_clicked();
    void on_pushButtonWaitPrint_clicked();
    void on_pushButtonComplete_clicked();
    void on_pushButtonAbort_clicked();

signals:
    void showWidgetInStacked(QWidget *page);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void showTab();
    int status() const;
    void chooseTab(class QPushButton *tab);
    void addRow(int number, const QueueRow &row, bool waiting);
    int selectedRow() const;
    QString selectedName() const;
    int pageStart() const;

    std::unique_ptr<Ui::FileForm> ui;
    QStandardItemModel m_model;
};

/// The process's one queue page. GUI thread.
FileForm *fileForm();
