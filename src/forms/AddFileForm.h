#pragma once
// The page that brings models in from a disk.

#include "forms/IMsgForm.h"

#include <QIcon>
#include <QModelIndex>
#include <QSet>
#include <QStandardItemModel>
#include <QStringList>
#include <QVector>
#include <QWidget>
#include <memory>

namespace Ui
{
class AddFileForm;
}

/// GUI thread.
class AddFileForm : public QWidget, public IMsgForm
{
    Q_OBJECT
public:
    AddFileForm();
    ~AddFileForm() override;

public slots:
    /// A disk came (its letter's code) or went (0xFF).
    void uDiskChange(uint8_t code);
    void on_pushButton_back_clicked();
    /// Copies the chosen files and puts them into the queue; holds the GUI thread meanwhile. Tells once, at
    /// the end, what did not go well.
    void on_pushButton_addfile_clicked();
    void on_tableView_clicked(QModelIndex index);
    void on_pushButton_nextpage_clicked();
    void on_pushButton_prepage_clicked();

signals:
    void showWidgetInStacked(QWidget *page);

protected:
    void showEvent(QShowEvent *event) override;

private:
    struct Entry {
        QString name;
        bool chosen = false;
    };

    QString diskFolder() const;
    void listFiles();
    void showPage(int startIndex);
    int pageStart() const;
    void showMark(int row, bool chosen);
    QString addModel(const QString &path, const QString &name);
    void unmark(const QSet<QString> &names);
    void tellTroubles(int added, const QStringList &troubles);

    std::unique_ptr<Ui::AddFileForm> ui;
    QStandardItemModel m_model;
    QVector<Entry> m_entries;
    QIcon m_checked;
    QIcon m_unchecked;
    bool m_adding = false; ///< the copies let events through
    uint8_t m_disk;        ///< letter of the disk, 0xFF: none
};

/// The process's one add page. GUI thread.
AddFileForm *addFileForm();
