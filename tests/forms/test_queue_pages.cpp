// The queue page, the page that adds files, and the copy behind them.

#include "forms/AddFileForm.h"
#include "forms/FileForm.h"
#include "forms/ListTable.h"
#include "forms/MsgForm.h"
#include "frame/SqliteUtil.h"
#include "platform/Volumes.h"
#include "printdata/PrintQueue.h"
#include "printdata/SliceToImage.h"
#include "tests/forms/FormRig.h"
#include "tests/support/LogCapture.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <QToolButton>

class TestQueuePages : public QObject
{
    Q_OBJECT

    FormRig m_rig;
    QTableView *table() { return FormRig::find<QTableView>("tableView"); }
    QString pageLabel() { return FormRig::find<QLabel>("label_page")->text(); }
    void press(const char *name) { FormRig::find<QAbstractButton>(name)->click(); }
    QString cell(int row, int column) { return table()->model()->index(row, column).data().toString(); }
    QString shown()
    {
        QStringList names;
        for (int row = 0; row < table()->model()->rowCount(); ++row)
            names << cell(row, 1).remove(".tzl");
        return names.join(' ');
    }
    QString queue(int status)
    {
        QStringList names;
        for (const QueueRow &row : queueRows(status))
            names << QString(row.modelName).remove(".tzl");
        return names.join(' ');
    }
    int selected() { return table()->selectionModel()->selectedRows().value(0).row(); }
    /// Waiting models 0 to count-1, in this order.
    void fill(int count)
    {
        sqliteUtil()->ExecuteSqlQuery("delete from PrintQueue");
        for (int i = count; i-- > 0;)
            FormRig::addModel(QString::number(i) + ".tzl");
        press("pushButton_fileList");
        press("pushButtonWaitPrint");
    }
    void setStatus(const char *name, int status)
    {
        sqliteUtil()->ExecuteSqlQuery(QString("update PrintQueue set status=%1,EndTime=\"end\" where "
                                              "ModelName=\"%2.tzl\"")
                                          .arg(status)
                                          .arg(name));
    }

private slots:
    void initTestCase() { FormRig::showWindow(); }

    void pagesOfSeven_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("afterNext");
        QTest::newRow("none") << 0 << "0/0"
                              << "0/0";
        QTest::newRow("seven") << 7 << "1/1"
                               << "1/1";
        QTest::newRow("eight") << 8 << "1/2"
                               << "2/2";
    }
    void pagesOfSeven()
    {
        QFETCH(int, count);
        fill(count);
        QTEST(pageLabel(), "label");
        QCOMPARE(table()->model()->rowCount(), qMin(7, count));
        press("pushButton_nextpage");
        QTEST(pageLabel(), "afterNext");
        if (count == 8) {
            QCOMPARE(cell(0, 0) + cell(0, 1) + cell(0, 4), QString("77.tzl7"));
            press("pushButton_nextpage"); // nothing after the last
            QCOMPARE(pageLabel(), QString("2/2"));
        }
        press("pushButton_prepage");
        QTEST(pageLabel(), "label");
        const int widths[] = {60, 230, 10, 208, 75};
        for (int column = 0; column < 5; ++column)
            QCOMPARE(table()->columnWidth(column), widths[column]);
    }

    void moves_data()
    {
        QTest::addColumn<int>("page");
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("after");
        QTest::addColumn<QString>("page and row");
        const QString same = "0 1 2 3 4 5 6 7 8";
        QTest::newRow("up") << 1 << 2 << "toolButton_fileup"
                            << "0 2 1 3 4 5 6 7 8"
                            << "1/2 1";
        QTest::newRow("up first") << 1 << 0 << "toolButton_fileup" << same << "1/2 6";
        QTest::newRow("up to the page before") << 2 << 0 << "toolButton_fileup"
                                               << "0 1 2 3 4 5 7 6 8"
                                               << "1/2 6";
        QTest::newRow("down") << 1 << 2 << "toolButton_filedown"
                              << "0 1 3 2 4 5 6 7 8"
                              << "1/2 3";
        QTest::newRow("down to the next page") << 1 << 6 << "toolButton_filedown"
                                               << "0 1 2 3 4 5 7 6 8"
                                               << "2/2 0";
        QTest::newRow("down last") << 2 << 1 << "toolButton_filedown" << same << "2/2 1";
        QTest::newRow("top") << 2 << 1 << "toolButton_filetop"
                             << "8 0 1 2 3 4 5 6 7"
                             << "1/2 0";
        QTest::newRow("delete, unasked") << 1 << 0 << "toolButton_delfile"
                                         << "1 2 3 4 5 6 7 8"
                                         << "1/2 0";
        QTest::newRow("reprint of a waiting one") << 1 << 4 << "pushButton_reprint" << same << "1/2 4";
    }
    void moves()
    {
        QFETCH(int, page);
        QFETCH(int, row);
        QFETCH(QString, button);
        fill(9);
        QCOMPARE(fileForm()->currentFile(), QString("0.tzl"));
        if (page == 2)
            press("pushButton_nextpage");
        table()->selectRow(row);
        press(qPrintable(button));
        QTEST(queue(QueueWaiting), "after");
        QTEST(pageLabel() + ' ' + QString::number(qMax(0, selected())), "page and row");
        QCOMPARE(QFile::exists("model/0.tzl"), button != "toolButton_delfile");
    }

    void withoutSelection()
    {
        fill(3);
        table()->clearSelection();
        for (const char *name : {"toolButton_fileup", "toolButton_filedown", "toolButton_filetop",
                                 "toolButton_delfile", "pushButton_reprint"})
            press(name);
        QCOMPARE(queue(QueueWaiting), QString("0 1 2"));
        fill(7);
        table()->selectRow(6);
        press("toolButton_filedown"); // there is no next page
        QCOMPARE(pageLabel() + ' ' + QString::number(selected()), QString("1/1 0"));
    }

    void tabs()
    {
        fill(4);
        setStatus("1", QueuePrinted);
        setStatus("2", QueueAborted);
        fileForm()->refresh(true);
        QCOMPARE(shown(), QString("0 3"));
        QVERIFY(cell(0, 3).startsWith("20"));
        press("pushButtonComplete");
        QCOMPARE(shown() + cell(0, 3), QString("1end"));
        QVERIFY(!FormRig::find<QPushButton>("pushButtonWaitPrint")->isChecked());
        QCOMPARE(fileForm()->currentFile(), QString("0.tzl")); // whatever tab is open
        press("pushButtonAbort");
        QCOMPARE(shown(), QString("2"));
        table()->selectRow(0);
        press("pushButton_reprint");
        QCOMPARE(shown(), QString()); // the tab on screen stays
        QCOMPARE(queue(QueueWaiting), QString("2 0 3"));
        QVERIFY(FormRig::find<QPushButton>("pushButtonAbort")->isChecked());
        press("pushButton_home");
        setStatus("3", QueueAborted);
        fileForm()->refresh(true); // not on screen: nothing is asked of the database
        press("pushButton_fileList");
        QCOMPARE(shown(), QString("3"));
    }

    void difficultNames()
    {
        fill(0);
        const QStringList names = {"a \"b\" c.tzl", "it's.tzl", "珍珠.tzl", QString(196, 'n') + ".tzl",
                                   "<b>x.tzl"};
        for (const QString &name : names)
            FormRig::addModel(name);
        fileForm()->refresh(true);
        for (int i = 0; i < names.size(); ++i)
            QCOMPARE(cell(names.size() - 1 - i, 1), names.at(i));
        QCOMPARE(table()->horizontalScrollBar()->maximum() + table()->verticalScrollBar()->maximum(), 0);
        for (int i = 0; i < names.size(); ++i) {
            table()->selectRow(0);
            press("toolButton_delfile");
        }
        QCOMPARE(queue(QueueWaiting), QString());
        QCOMPARE(QDir("model").entryList({"*b*", "it*", "珍*", "n*"}, QDir::Files), QStringList());
    }

    void copies_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("a block") << QByteArray(0x2000, 'a');
        QTest::newRow("blocks and a rest") << QByteArray(0x2000 * 40 + 17, 'b');
    }
    void copies()
    {
        QFETCH(QByteArray, content);
        writeFile("source", content);
        for (const bool keepAsIs : {false, true}) {
            QFile::remove("target.md5");
            QVERIFY(fileForm()->copyFile("source", "target", keepAsIs));
            QCOMPARE(readFile("target"), content);
            const QByteArray hash = QCryptographicHash::hash(content, QCryptographicHash::Md5).toHex();
            QCOMPARE(readFile("target.md5"), keepAsIs ? QByteArray() : hash);
            QVERIFY(!msgForm()->isTaken());
        }
    }

    void copyFailures()
    {
        LogCapture log;
        QVERIFY(!fileForm()->copyFile("nothing here", "target2", false));
        QVERIFY(!QFile::exists("target2"));
        writeFile("source", QByteArray(0x3000, 'x'));
        QVERIFY(!fileForm()->copyFile("source", "no folder/target", false));
        QCOMPARE(log.count("open file error: "), 2);
        QVERIFY(QFile::link("/dev/full", "full"));
        writeFile("full.md5", "old");
        QVERIFY(!fileForm()->copyFile("source", "full", false));
        QCOMPARE(log.count("fwrite error: fread=8192,fwrite=-1"), 1);
        QVERIFY(!QFileInfo("full").isSymLink());
        QVERIFY(!QFile::exists("full.md5"));
        QVERIFY(!msgForm()->isTaken());
    }

    void copyLeavesAnothersMessage()
    {
        QVERIFY(mainWindow()->showMessageForm("alarm", 3, 0x200000, ""));
        writeFile("source", "x");
        QVERIFY(fileForm()->copyFile("source", "target", false));
        QVERIFY(msgForm()->isTaken());
        msgForm()->closeMessageForm();
    }

    void addsMarkedFiles()
    {
        fill(1);
        QVERIFY(!FormRig::find<QPushButton>("pushButton_addfile")->isVisible());
        const QStringList names = {"a.tzl", "b.tzl", "c.tzl", "d.tzl", "e.tzl", "f.tzl", "g.tzl", "h i.tzl"};
        QDir disk(m_rig.plugDisk(names + QStringList{"notes.txt"}));
        QTRY_VERIFY(FormRig::find<QPushButton>("pushButton_addfile")->isVisible());
        press("pushButton_addfile");
        QVERIFY(addFileForm()->isVisible());
        QCOMPARE(pageLabel() + ' ' + shown(), QString("1/2 a b c d e f g"));
        const auto mark = [this](int row) { emit table()->clicked(table()->model()->index(row, 1)); };
        const auto marked = [this](int row) {
            return !table()->model()->index(row, 2).data(Qt::DecorationRole).value<QIcon>().isNull();
        };
        for (int row : {0, 1, 1, 2, 3})
            mark(row);
        press("pushButton_nextpage");
        mark(0);
        press("pushButton_prepage"); // marks survive
        QVERIFY(marked(0) && !marked(1) && marked(2) && marked(3) && !marked(4));
        FormRig::addModel("c.tzl");
        QCOMPARE(sliceToImage()->loadModelInfo("model/c.tzl"), 0); // in use
        QFile::remove(disk.filePath("d.tzl"));                     // gone meanwhile
        press("pushButton_addfile");
        QCOMPARE(queue(QueueWaiting), QString("h i a c 0"));
        QCOMPARE(readFile("model/a.tzl"), readFile(disk.filePath("a.tzl")));
        QVERIFY(!msgForm()->isTaken());
        press("pushButton_back");
        QVERIFY(fileForm()->isVisible());
        disk.removeRecursively();
        QTRY_VERIFY(!FormRig::find<QPushButton>("pushButton_addfile")->isVisible());
        addFileForm()->uDiskChange(noVolume);
        mainWindow()->showWidgetInStacked(addFileForm());
        QCOMPARE(pageLabel(), QString("0/0"));
    }
};

FORM_TEST_MAIN(TestQueuePages)
#include "test_queue_pages.moc"
