// The home page and the window around it: what is shown, and what the buttons do to job, slicer and boards.

#include "engine/XdmControl.h"
#include "events/EventHandler.h"
#include "forms/FileForm.h"
#include "forms/HomeForm.h"
#include "forms/MsgForm.h"
#include "forms/StartCheck.h"
#include "frame/ProgramVersion.h"
#include "frame/SqliteUtil.h"
#include "material/TempCtl.h"
#include "printdata/PrintQueue.h"
#include "printdata/SliceToImage.h"
#include "tests/forms/FormRig.h"
#include "tests/support/LogCapture.h"

#include <QDateTime>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QtMath>

class TestHome : public QObject
{
    Q_OBJECT

    FormRig m_rig;
    template <class T = QPushButton> T *part(const char *name) { return homeForm()->findChild<T *>(name); }
    QString text(const char *label) { return part<QLabel>(label)->text(); }
    void showHome()
    {
        FormRig::find<QAbstractButton>("pushButton_fileList")->click();
        FormRig::find<QAbstractButton>("pushButton_home")->click();
    }
    void setJob(const QJsonObject &state)
    {
        xdmControl()->resetPrintState(0);
        for (auto it = state.begin(); it != state.end(); ++it)
            FormRig::setJobState(it.key(), it.value());
        homeForm()->msecEvent();
    }
    QColor pixel(double degreesFromTop)
    {
        const double angle = qDegreesToRadians(degreesFromTop - 90);
        const QImage image = part<QWidget>("frame")->grab().toImage();
        return image.pixelColor(qRound(176.5 + 109 * cos(angle)), qRound(237.5 + 109 * sin(angle)));
    }
    /// Presses Start and answers its questions; what the press blocks on has ended when this returns.
    void start()
    {
        m_rig.setPlatformInPlace(true);
        FormRig::answerLater("pushButton_Yes", "平台是否为空?");
        FormRig::answerLater("pushButton_Yes", "清空废料箱");
        part("pushButton_printImage")->click();
    }

private slots:
    void initTestCase()
    {
        EventHandler::instance();
        m_rig.bridge.setBytes(5, 0x33, {{2, 1}}); // the ink box door is closed
        FormRig::showWindow();
    }
    void init() { m_rig.setDiskSpace(400); }
    void cleanup()
    {
        msgForm()->closeMessageForm();
        QTRY_VERIFY_WITH_TIMEOUT(!xdmControl()->isRunning(), 30000);
        xdmControl()->setPrintStatus(PrintStatusIdle);
        sqliteUtil()->ExecuteSqlQuery("delete from PrintQueue");
    }

    void iconsAndVersions()
    {
        for (const char *name :
             {"Resume", "Pause", "lock", "unlock", "Warning", "Critical", "Information", "details", "check"})
            for (const char *path : {":icon/%1.png", ":/icon/%1.png"})
                QVERIFY2(!QPixmap(QString(path).arg(name)).isNull(), name);
        for (const char *old : {"", "Lamorel vesion: 1.3.1", "Lamorel vesion: 1.10.0"}) // compared as texts
            QVERIFY2(isSlicerTooOld(old), old);
        for (const char *good : {"Lamorel vesion: 1.3.2", "Lamorel vesion: 1.3.2\n", "Lamorel vesion: 1.4"})
            QVERIFY2(!isSlicerTooOld(good), good);
        QCOMPARE(programVersion(), QString("4.4.1.4-III"));
    }

    void showsTheWaitingModel()
    {
        showHome();
        QVERIFY(!part("pushButton_printImage")->isEnabled());
        QCOMPARE(text("label_Name") + '|' + text("label_tips"), QString("|请选择打印文件"));
        QImage picture(80, 60, QImage::Format_RGB32);
        picture.fill(Qt::red);
        FormRig::addModel("later.tzl");
        FormRig::addModel("a.tzl.copy \"1\".tzl", picture);
        showHome();
        QVERIFY(part("pushButton_printImage")->isEnabled());
        QCOMPARE(text("label_Name") + '|' + text("label_tips"), QString("a.tzl.copy \"1\"|"));
        QCOMPARE(text("label_LeftTime"), QString("02:35"));
        QCOMPARE(sliceToImage()->fileName(), QString("a.tzl.copy \"1\".tzl"));
        const QPixmap shown = part<QLabel>("label_Image")->pixmap(Qt::ReturnByValue);
        QCOMPARE(shown.size(), QSize(174, 174));
        QCOMPARE(shown.toImage().pixelColor(87, 87), QColor(Qt::red));
        QCOMPARE(shown.toImage().pixelColor(8, 8).alpha(), 0); // clear of the ring
    }

    void showsTheJob()
    {
        xdmControl()->setPrintStatus(PrintStatusPrinting);
        showHome();
        const QJsonObject job = {{"Tips", "120-3 480"},
                                 {"StartTime", "2026-01-02 03:04"},
                                 {"LeftTime", 360359.0},
                                 {"PrintLayer", 120},
                                 {"SumLayer", 480}};
        setJob(job);
        QCOMPARE(text("label_LeftTime") + '|' + text("label_tips") + '|' + text("label_StartTime"),
                 QString("100:05|120-3 480|2026-01-02 03:04"));
        const QDateTime end = QDateTime::fromString(text("label_EndTime"), "yyyy-MM-dd hh:mm");
        QVERIFY(qAbs(QDateTime::currentDateTime().secsTo(end) - 360359) <= 61);
        QCOMPARE(text("label_Percent"), QString("25 %"));
        const QColor filled(0xf2, 0xa3, 0x3c), empty(0x2b, 0x33, 0x3d);
        QCOMPARE(pixel(5), filled); // a quarter, clockwise from the top
        QCOMPARE(pixel(85), filled);
        QCOMPARE(pixel(95), empty);
        QCOMPARE(pixel(355), empty);
        setJob({{"Tips", "x"}, {"PrintLayer", 3}, {"SumLayer", 0}}); // before the number of layers is known
        QCOMPARE(pixel(200), filled);
        QCOMPARE(text("label_Percent"), QString("100 %"));
        xdmControl()->setPrintStatus(PrintStatusIdle);
        setJob(job);
        QCOMPARE(text("label_Percent"), QString("100 %")); // an idle page keeps what it showed
    }

    void statusAndWarnings()
    {
        const char *texts[] = {"预热中... ...", "打印中... ...", "保温中... ..."};
        for (int mode : {1, 2, 0}) {
            emit tempCtl()->tempStatus(mode);
            QTRY_COMPARE(text("label_status"), QString(texts[mode]));
        }
        const int before = EventHandler::activeEvents().size();
        EventHandler::setEvent(0x24, "");
        QTRY_COMPARE(part("pushButton_warning")->text(), QString::number(before + 1));
        EventHandler::clearEvent(0x24);
        QTRY_COMPARE(part("pushButton_warning")->text(), QString::number(before));
    }

    void frontDoor()
    {
        m_rig.bridge.clearRecord();
        for (int state : {1, 0}) {
            part("pushButton_lock")->click();
            QTRY_COMPARE(m_rig.bridge.count(5, 0x42), 2 - state);
            QCOMPARE(m_rig.bridge.requests(5, 0x42).last().data.count(char(1)) > 0, state == 1);
        }
    }

    void diskRules_data()
    {
        QTest::addColumn<QString>("root");
        QTest::addColumn<double>("available");
        QTest::addColumn<bool>("may");
        QTest::addColumn<QString>("message");
        const QString shortOf = "磁盘空间不足，总共: 500.00GB,已用: %1 GB 请及时清理模型";
        QTest::newRow("enough") << "D:/" << 120.0 << true << "";
        QTest::newRow("warned") << "D:/" << 100.0 << true << shortOf.arg("100.00");
        QTest::newRow("last that prints") << "/op" << 80.0 << true << shortOf.arg("80.00");
        QTest::newRow("too little") << "/op" << 79.99 << false << shortOf.arg("79.99");
        QTest::newRow("system disk") << "C:/" << 400.0 << false << "请移动到 非系统磁盘";
        QTest::newRow("no drive") << "C:" << 400.0 << true << "";
    }
    void diskRules()
    {
        QFETCH(QString, root);
        QFETCH(double, available);
        const DiskVerdict verdict = judgeDisk(root, {500, available});
        QTEST(verdict.mayPrint, "may");
        QTEST(verdict.message, "message");
    }

    void diskBeforeEverything()
    {
        m_rig.setDiskSpace(79.5);
        xdmControl()->setPrintStatus(PrintStatusPrinting);
        FormRig::answerLater("pushButton_close");
        homeForm()->on_pushButton_printImage_clicked(); // also a pause
        QCOMPARE(xdmControl()->getPrintStatus(), int(PrintStatusPrinting));
    }

    void pauseAndResume()
    {
        xdmControl()->setPrintStatus(PrintStatusPrinting);
        emit xdmControl()->pausePrintSingals();
        QTRY_COMPARE(xdmControl()->getPrintStatus(), int(PrintStatusPaused));
        QCOMPARE(part("pushButton_printImage")->text(), QString("继续"));
        m_rig.setPlatformInPlace(false);
        homeForm()->on_pushButton_printImage_clicked();
        QCOMPARE(FormRig::message(), QString("平台未放好"));
        QCOMPARE(xdmControl()->getPrintStatus(), int(PrintStatusPaused));
        msgForm()->closeMessageForm();
        m_rig.setPlatformInPlace(true);
        homeForm()->on_pushButton_printImage_clicked();
        QCOMPARE(xdmControl()->getPrintStatus(), int(PrintStatusPrinting));
        QCOMPARE(part("pushButton_printImage")->text(), QString("暂停"));
    }

    void refusedStarts()
    {
        FormRig::addModel("a.tzl");
        showHome();
        m_rig.setPlatformInPlace(true);
        FormRig::answerLater("pushButton_No");
        homeForm()->on_pushButton_printImage_clicked();
        QVERIFY(!sliceToImage()->isRunning());
        QFile::rename("Lamorel/lamorel.exe", "Lamorel/away");
        start();
        QCOMPARE(FormRig::message(), QString("切片失败"));
        QFile::rename("Lamorel/away", "Lamorel/lamorel.exe");
        QCOMPARE(xdmControl()->getPrintStatus(), int(PrintStatusIdle));
        QVERIFY(!xdmControl()->isRunning());
        homeForm()->on_pushButton_printStop_clicked(); // idle: asks nothing
    }

    void jobThatEndsByItself()
    {
        m_rig.bridge.setValue(2, 0x90, 0); // the leveller does not turn
        FormRig::addModel("a.tzl");
        showHome();
        start();
        QVERIFY(xdmControl()->isRunning());
        QVERIFY(part("pushButton_printStop")->isEnabled());
        QVERIFY(sliceToImage()->isRunning());
        QTRY_COMPARE(xdmControl()->getPrintStatus(), int(PrintStatusIdle));
        QVERIFY(!part("pushButton_printStop")->isEnabled());
        QTRY_VERIFY(!sliceToImage()->isRunning());
        QCOMPARE(text("label_Percent") + part("pushButton_printImage")->text(), QString("0 %开始打印"));
    }

    void refusedMachineType()
    {
        m_rig.bridge.setValue(2, 0x90, 500);
        FormRig::addModel("a.tzl", {}, "Pelora999");
        QWidget *pages = mainWindow()->centralWidget();
        for (const bool stopFirst : {false, true}) {
            showHome();
            start();
            if (stopFirst) {
                FormRig::answerLater("pushButton_Yes");
                part("pushButton_printStop")->click();
                QVERIFY(!pages->isEnabled());
            }
            // the question can be answered while the pages cannot be touched
            FormRig::answerLater("pushButton_No",
                                 EventHandler::eventMessage(0x13).arg("Pelora999", "Pelora620"));
            QTRY_VERIFY(!xdmControl()->isRunning());
            QTRY_VERIFY(pages->isEnabled() && !part("pushButton_printStop")->isEnabled());
            QCOMPARE(xdmControl()->getPrintStatus(), int(PrintStatusIdle));
        }
    }

    void stopNotConfirmed()
    {
        xdmControl()->setPrintStatus(PrintStatusPrinting);
        FormRig::answerLater("pushButton_No");
        homeForm()->on_pushButton_printStop_clicked();
        QCOMPARE(xdmControl()->getPrintStatus(), int(PrintStatusPrinting));
        QTimer::singleShot(0, [&] { // the job ends while the question is open
            homeForm()->stopPrintSlots();
            FormRig::answerLater("pushButton_Yes");
        });
        homeForm()->on_pushButton_printStop_clicked();
        QVERIFY(mainWindow()->centralWidget()->isEnabled());
    }
};

FORM_TEST_MAIN(TestHome)
#include "test_home.moc"
