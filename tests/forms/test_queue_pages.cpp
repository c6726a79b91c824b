// The queue page, the page that adds files, and the copy behind them.

#include "engine/XdmControl.h"
#include "forms/AddFileForm.h"
#include "forms/FileForm.h"
#include "forms/HomeForm.h"
#include "forms/MsgForm.h"
#include "forms/PrintInfoForm.h"
#include "frame/SqliteUtil.h"
#include "printdata/PrintQueue.h"
#include "printdata/QueueNotice.h"
#include "printdata/SliceToImage.h"
#include "tests/forms/FormRig.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QtConcurrent>

#include <csignal>
#include <sys/resource.h>

class TestQueuePages : public QObject
{
    Q_OBJECT

    FormRig m_rig;
    void press(const QString &name) { FormRig::press(name); }
    QTableView *table() { return FormRig::find<QTableView>("tableView"); }
    QVariant cell(int row, int column, int role = Qt::DisplayRole)
    {
        return table()->model()->index(row, column).data(role);
    }
    /// Page label and names of the rows.
    QString shown()
    {
        QStringList words = {FormRig::text("label_page")};
        for (int row = 0; row < table()->model()->rowCount(); ++row)
            words << cell(row, 1).toString().remove(".tzl");
        return words.join(' ');
    }
    QString waiting()
    {
        QStringList names;
        for (const QueueRow &row : queueRows(QueueWaiting))
            names << QString(row.modelName).remove(".tzl");
        return names.join(' ');
    }
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
        const QString statement =
            "update PrintQueue set status=%1,EndTime=\"end\" where ModelName=\"%2.tzl\"";
        sqliteUtil()->ExecuteSqlQuery(statement.arg(status).arg(name));
    }

private slots:
    void initTestCase() { FormRig::showWindow(); }

    void pagesOfSeven()
    {
        fill(0);
        QCOMPARE(shown(), QString("0/0"));
        fill(7);
        press("pushButton_nextpage");
        QCOMPARE(shown(), QString("1/1 0 1 2 3 4 5 6"));
        table()->selectRow(6);
        press("toolButton_filedown"); // there is no next page
        QCOMPARE(table()->currentIndex().row(), 0);
        fill(8);
        for (int i = 0; i < 2; ++i) { // nothing comes after the last
            press("pushButton_nextpage");
            QCOMPARE(shown() + cell(0, 0).toString() + cell(0, 4).toString(), QString("2/2 777"));
        }
        press("pushButton_prepage");
        QCOMPARE(shown(), QString("1/2 0 1 2 3 4 5 6"));
        const int widths[] = {60, 230, 10, 208, 75};
        for (int column = 0; column < 5; ++column)
            QCOMPARE(table()->columnWidth(column), widths[column]);
        table()->clearSelection();
        for (const char *tool : {"fileup", "filedown", "filetop", "delfile"})
            press(QString("toolButton_") + tool);
        QCOMPARE(waiting(), QString("0 1 2 3 4 5 6 7"));
    }

    void moves_data()
    {
        QTest::addColumn<int>("page");
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("after");
        QTest::addColumn<QString>("page and row");
        const QString same = "0 1 2 3 4 5 6 7 8", swapped = "0 1 2 3 4 5 7 6 8";
        const QString up = "toolButton_fileup", down = "toolButton_filedown";
        QTest::newRow("up") << 1 << 2 << up << "0 2 1 3 4 5 6 7 8"
                            << "1/2 1";
        QTest::newRow("up first") << 1 << 0 << up << same << "1/2 6";
        QTest::newRow("up to the page before") << 2 << 0 << up << swapped << "1/2 6";
        QTest::newRow("down") << 1 << 2 << down << "0 1 3 2 4 5 6 7 8"
                              << "1/2 3";
        QTest::newRow("down to the next page") << 1 << 6 << down << swapped << "2/2 0";
        QTest::newRow("down last") << 2 << 1 << down << same << "2/2 1";
        QTest::newRow("top") << 2 << 1 << "toolButton_filetop"
                             << "8 0 1 2 3 4 5 6 7"
                             << "1/2 0";
        QTest::newRow("delete") << 1 << 0 << "toolButton_delfile"
                                << "1 2 3 4 5 6 7 8"
                                << "1/2 -1";
        QTest::newRow("reprint of a waiting one") << 1 << 4 << "pushButton_reprint" << same << "1/2 4";
    }
    void moves()
    {
        QFETCH(int, page);
        QFETCH(int, row);
        QFETCH(QString, button);
        fill(9);
        if (page == 2)
            press("pushButton_nextpage");
        table()->selectRow(row);
        press(button);
        QTEST(waiting(), "after");
        const QModelIndexList selected = table()->selectionModel()->selectedRows();
        QTEST(shown().left(4) + QString::number(selected.value(0).row()), "page and row");
        QCOMPARE(QFile::exists("model/0.tzl"), button != "toolButton_delfile");
    }

    void tabs()
    {
        fill(4);
        setStatus("1", QueuePrinted);
        setStatus("2", QueueAborted);
        fileForm()->refresh(true);
        QCOMPARE(shown() + cell(0, 3).toString().left(2), QString("1/1 0 320"));
        press("pushButtonComplete");
        QCOMPARE(shown() + cell(0, 3).toString(), QString("1/1 1end"));
        QCOMPARE(fileForm()->currentFile(), QString("0.tzl")); // whatever tab is open
        press("pushButtonAbort");
        table()->selectRow(0);
        press("pushButton_reprint");
        QCOMPARE(shown(), QString("0/0")); // the tab on screen stays
        QCOMPARE(waiting(), QString("2 0 3"));
        press("pushButton_home");
        setStatus("3", QueueAborted);
        fileForm()->refresh(true);
        QCOMPARE(fileForm()->findChild<QTableView *>()->model()->rowCount(), 0); // not on screen: as it was
        press("pushButton_fileList");
        QCOMPARE(shown(), QString("1/1 3"));
    }

    /// The remote client learns of the machine's own changes, and the page of the client's.
    void changesOfTheQueue()
    {
        fill(4);
        for (const char *button : {"fileup", "filedown", "filetop", "delfile"}) {
            table()->selectRow(1);
            press(QString("toolButton_") + button);
            QVERIFY2(takeQueueChanged() && !takeQueueChanged(), button);
        }
        homeForm()->stopPrintSlots();
        QVERIFY(takeQueueChanged());
        QtConcurrent::run([] {
            removeModel(firstWaitingModel());
            refreshQueue(false);
        }).waitForFinished();
        QCOMPARE(table()->model()->rowCount(), 3); // the page has its own thread
        QTRY_COMPARE(table()->model()->rowCount(), 2);
        press("pushButton_home");
        press("pushButton_fileList"); // a look is no change
        QVERIFY(!takeQueueChanged());
    }

    void difficultNames()
    {
        fill(0);
        const QStringList names = {"a \"b\" c.tzl", "it's.tzl", "珍珠.tzl", QString(196, 'n') + ".tzl"};
        for (const QString &name : names) {
            FormRig::addModel(name);
            fileForm()->refresh(true);
            QCOMPARE(cell(0, 1).toString(), name);
            table()->selectRow(0);
            press("toolButton_delfile");
            QCOMPARE(waiting(), QString());
            QVERIFY(!QFile::exists("model/" + name));
        }
    }

    void copies()
    {
        for (const QByteArray &content : {QByteArray(), QByteArray(0x2000, 'a'), QByteArray(0x28011, 'b')}) {
            writeFile("source", content);
            const QByteArray hash = QCryptographicHash::hash(content, QCryptographicHash::Md5).toHex();
            for (const bool keepAsIs : {false, true}) {
                QFile::remove("target.md5");
                QVERIFY(fileForm()->copyFile("source", "target", keepAsIs));
                QCOMPARE(readFile("target"), content);
                QCOMPARE(readFile("target.md5"), keepAsIs ? QByteArray() : hash);
            }
        }
        QVERIFY(!msgForm()->isTaken());
        QVERIFY(mainWindow()->showMessageForm("alarm", 3, 0x200000, ""));
        QVERIFY(fileForm()->copyFile("source", "target", false));
        QCOMPARE(FormRig::message(), QString("alarm")); // another's message is not the copy's to close
        msgForm()->closeMessageForm();
        QTimer::singleShot(0, [] { // nor one that came after the operator closed the progress
            msgForm()->on_pushButton_close_clicked();
            mainWindow()->showMessageForm("alarm", 3, 0x200000, "");
        });
        QVERIFY(fileForm()->copyFile("source", "target", false));
        QCOMPARE(FormRig::message(), QString("alarm"));
        msgForm()->closeMessageForm();
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
        QVERIFY(!QFileInfo("full").isSymLink() && !QFile::exists("full.md5"));
        std::signal(SIGXFSZ, SIG_IGN); // a disk that is full in the middle of a block
        rlimit before{};
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit little{0x2800, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &little);
        const bool copied = fileForm()->copyFile("source", "part", false);
        setrlimit(RLIMIT_FSIZE, &before);
        QVERIFY(!copied && !QFile::exists("part") && !QFile::exists("part.md5"));
        QTimer::singleShot(0, [] { QFile::resize("source", 0x2001); }); // the disk goes during the copy
        QVERIFY(!fileForm()->copyFile("source", "part", false));
        QVERIFY(!QFile::exists("part") && !QFile::exists("part.md5"));
        QVERIFY(!msgForm()->isTaken());
    }

    void addsMarkedFiles()
    {
        fill(1);
        const auto offered = [] { return FormRig::find<QPushButton>("pushButton_addfile")->isVisible(); };
        QVERIFY(!offered());
        QDir disk(m_rig.plugDisk(
            {"a.tzl", "b.tzl", "c.tzl", "d.tzl", "e.tzl", "f.tzl", "g.tzl", "h i.tzl", "n.txt"}));
        QTRY_VERIFY(offered());
        press("pushButton_addfile");
        QCOMPARE(shown(), QString("1/2 a b c d e f g"));
        const auto mark = [this](int row) { emit table()->clicked(table()->model()->index(row, 1)); };
        for (int row : {0, 1, 1, 2, 3})
            mark(row);
        press("pushButton_nextpage");
        mark(0);
        press("pushButton_prepage");          // marks survive
        const auto marked = [this](int row) { // a plain box, or a green tick in it
            const QImage icon = cell(row, 2, Qt::DecorationRole).value<QIcon>().pixmap(32, 32).toImage();
            return icon.pixelColor(15, 19).green() > 150 && icon.pixelColor(15, 19).alpha() > 100;
        };
        for (int row = 0; row < 5; ++row)
            QCOMPARE(marked(row), row != 1 && row != 4);
        FormRig::addModel("c.tzl");
        QCOMPARE(sliceToImage()->loadModelInfo("model/c.tzl"), 0); // in use
        QFile::remove(disk.filePath("d.tzl"));                     // gone meanwhile
        press("pushButton_addfile");
        QCOMPARE(waiting(), QString("h i a c 0"));
        QVERIFY(takeQueueChanged());
        QCOMPARE(readFile("model/a.tzl"), readFile(disk.filePath("a.tzl")));
        QCOMPARE(FormRig::message(), QString("2个文件已添加，2个有问题：\nc.tzl：正在使用，未添加\n"
                                             "d.tzl：复制失败，请检查U盘和磁盘空间"));
        msgForm()->closeMessageForm();
        for (int row = 0; row < 5; ++row) // what failed is marked for another try
            QCOMPARE(marked(row), row == 2 || row == 3);
        disk.removeRecursively();
        QTRY_COMPARE(shown(), QString("0/0"));
        press("pushButton_back");
        QVERIFY(fileForm()->isVisible() && !offered());
    }

    /// A disk of 500 models, difficult ones among them; a replaced model whose copy fails leaves no row.
    void addsManyAndBadOnes()
    {
        fill(0);
        FormRig::addModel("full.tzl");
        QVERIFY(QFile::remove("model/full.tzl") && QFile::link("/dev/full", "model/full.tzl"));
        QStringList names = {"full.tzl", "a \"b\" 'c'.tzl", "珍珠 %1 %2.tzl", "back\\slash.tzl"};
        for (int i = names.size(); i < 499; ++i)
            names << QString("m%1.tzl").arg(i);
        QDir disk(m_rig.plugDisk(names));
        writeFile(disk.filePath("damaged.tzl"), "no model");
        QTRY_VERIFY(FormRig::find<QPushButton>("pushButton_addfile")->isVisible());
        press("pushButton_addfile");
        QVERIFY2(shown().startsWith("1/72 "), qPrintable(shown()));
        const auto mark = [this] {
            for (int row = 0; row < table()->model()->rowCount(); ++row)
                emit table()->clicked(table()->model()->index(row, 0));
        };
        for (int page = 0; page < 72; ++page) {
            if (page == 0 || page == 71)
                mark();
            press("pushButton_nextpage");
        }
        press("pushButton_addfile");
        const QString trouble = FormRig::message();
        QVERIFY2(trouble.startsWith("7个文件已添加，3个有问题："), qPrintable(trouble));
        for (const char *line : {"back\\slash.tzl：文件名无效，未添加", "damaged.tzl：文件损坏，无法打印",
                                 "full.tzl：复制失败，请检查U盘和磁盘空间"})
            QVERIFY2(trouble.contains(line), qPrintable(trouble));
        msgForm()->closeMessageForm();
        QVERIFY(!waiting().contains("full") && waiting().contains("a \"b\" 'c'") &&
                waiting().contains("珍珠 %1 %2"));

        removeModel("damaged.tzl");
        for (const QString &name : {QString("damaged.tzl"), QString("a \"b\" 'c'.tzl")}) {
            addToQueue(name);
            press("pushButton_home"); // what cannot be read must not have another model printed in its place
            QCOMPARE(homeForm()->findChild<QPushButton *>("pushButton_printImage")->isEnabled(),
                     name != "damaged.tzl");
        }
        disk.removeRecursively();
    }

    /// The model that is shown is the one that prints, wherever it stands; a refused start leaves the first.
    void startsFromItsDetails()
    {
        fill(2);
        press("pushButton_home");
        press("pushButton_fileList");
        QImage view(300, 100, QImage::Format_RGB32);
        view.fill(Qt::red);
        QByteArray png;
        QBuffer buffer(&png);
        view.save(&buffer, "PNG");
        writeFile("model/1.tzl", modelBytes(pictureSettings(64, 64, 0, 4) +
                                                "printTime=93000\nlayerCnt=480\nextentX=17.2\nextentY=17\n"
                                                "extentZ=8.5\nprintModeName=HD\nPrintModeName=no\n",
                                            {}, png));
        const auto open = [this](int row) {
            press("pushButton_fileList");
            emit table()->clicked(table()->model()->index(row, 1));
            QVERIFY(!printInfoForm()->isVisible());
            emit table()->clicked(table()->model()->index(row, 4));
            QVERIFY(printInfoForm()->isVisible());
        };
        const auto values = [] {
            QStringList texts;
            for (const char *name : {"name", "printTime", "structure", "support", "mode", "layers", "volume"})
                texts << FormRig::text(QString("label_") + name);
            return texts.join('|');
        };
        const auto start = [this] { press("pushButton_printImage"); };
        open(1);
        QCOMPARE(values(), QString("1.tzl|25:50|12.5 g|3 g|HD|480|17.2 x 17 x 8.5"));
        auto *picture = printInfoForm()->findChild<QLabel *>("label_Image");
        QCOMPARE(picture->pixmap(Qt::ReturnByValue).size(), QSize(544, 181));
        m_rig.setPlatformInPlace(true);
        FormRig::answerLater("pushButton_No", "平台是否为空?");
        start();
        QVERIFY(homeForm()->isVisible());
        QCOMPARE(sliceToImage()->fileName() + FormRig::text("label_Name"), QString("0.tzl0"));
        open(1);
        FormRig::answerLater("pushButton_Yes", "平台是否为空?");
        FormRig::answerLater("pushButton_Yes", "清空废料箱");
        start();
        QVERIFY(FormRig::find<QAbstractButton>("pushButton_home")->isChecked());
        QCOMPARE(sliceToImage()->fileName() + FormRig::text("label_Name"), QString("1.tzl1"));
        QCOMPARE(xdmControl()->getPrintStatus(), int(PrintStatusPrinting));
        open(0);
        auto *button = printInfoForm()->findChild<QPushButton *>("pushButton_printImage");
        QVERIFY(!button->isEnabled()); // its press would pause the job
        press("pushButton_fileList");
        table()->selectRow(1);
        press("toolButton_delfile"); // also the running job's
        press("pushButton_home");
        QCOMPARE(sliceToImage()->fileName(), QString("1.tzl"));
        printInfoForm()->showModel("1.tzl"); // files are gone
        QCOMPARE(values(), QString("1.tzl|--|--|--|--|--|--"));
        mainWindow()->showWidgetInStacked(printInfoForm());
        xdmControl()->setPrintStatus(PrintStatusIdle);
        QTRY_VERIFY_WITH_TIMEOUT(!xdmControl()->isRunning(), 30000);
        QTRY_VERIFY(button->isEnabled()); // the end of the job frees it
        msgForm()->closeMessageForm();
        start();
        QCOMPARE(FormRig::message(), QString("模型文件损坏或已删除，请重新添加"));
        QVERIFY(printInfoForm()->isVisible() && xdmControl()->getPrintStatus() == PrintStatusIdle);
        msgForm()->closeMessageForm();
    }
};

FORM_TEST_MAIN(TestQueuePages)
#include "test_queue_pages.moc"
