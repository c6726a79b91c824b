// The tool page with its log export, updates and power-off, the pages behind it, and the dark screen.

#include "events/EventHandler.h"
#include "forms/DarkScreen.h"
#include "forms/FileForm.h"
#include "forms/HomeForm.h"
#include "forms/MsgForm.h"
#include "forms/ToolForm.h"
#include "frame/JsonConfig.h"
#include "frame/RotatingLog.h"
#include "platform/Clock.h"
#include "platform/Volumes.h"
#include "scripted/climatehib.h"
#include "tests/forms/FormRig.h"
#include "tests/support/LogCapture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QLibrary>
#include <QTableView>
#include <QTest>
#include <QTimer>

class TestTool : public QObject
{
    Q_OBJECT

    const bool m_fast = qputenv("PELORA_TIME_SCALE", "200"); // ten minutes in three seconds
    FormRig m_rig;
    std::unique_ptr<LogCapture> m_log; // takes over when the test framework has installed its own
    ClimateHib *m_hib = nullptr;
    QString m_disk{"none"};

    static bool isEnabled(const char *button) { return FormRig::find<QAbstractButton>(button)->isEnabled(); }
    int restarts() const { return m_log->count("taken as done: reboot"); }
    void plug()
    {
        QVERIFY(QDir(m_disk).exists() || waitUntil([] { return volumePath("E:\\") == "E:/"; }));
        m_disk = m_rig.plugDisk({});
        QVERIFY(waitUntil([] { return isEnabled("pushButton_Log"); }));
        m_log->clear();
    }
    void pull()
    {
        QDir(m_disk).removeRecursively();
        emit mainWindow()->sigUDiskChange(0xFF);
    }
    /// Does `act` while the copy number `copy` from now on lets events through.
    static void duringCopy(int copy, const std::function<void()> &act)
    {
        QTimer::singleShot(0, qApp, [=] { copy > 1 ? duringCopy(copy - 1, act) : act(); });
    }
    static QStringList tableRows()
    {
        const QAbstractItemModel *model = FormRig::find<QTableView>("tableView")->model();
        QStringList rows;
        for (int row = 0; row < model->rowCount(); ++row)
            rows << model->index(row, 0).data().toString() + model->index(row, 1).data().toString();
        return rows;
    }

private slots:
    void initTestCase()
    {
        QFile::copy(CLIMATE_HIB_FILE, "libhibApiDll64.so");
        m_hib = reinterpret_cast<ClimateHib *(*)()>(
            QLibrary(QDir::current().absoluteFilePath("hibApiDll64")).resolve("climateHib"))();
        m_hib->degrees = 0; // as wanted: neither heads nor boards raise events
        platformConfig()->setValue("COM16", "/dev/null/none");
        m_log = std::make_unique<LogCapture>();
        FormRig::showWindow();
    }
    void init() { FormRig::press("pushButton_tool"); }

    void exportsLogs()
    {
        QVERIFY(!isEnabled("pushButton_Log") && !isEnabled("pushButton_update"));
        plug();
        writeFile(logPath("pelora.log"), QByteArray(20000, 'p'));
        for (const char *name : {"pelora.log1", "ydata.csv3", "ydata.csv4"})
            writeFile(logPath(name), name);
        writeFile(m_disk + "/Lamorel.7z", "slicer");
        duringCopy(2, [] { // a finger on everything, fast
            for (const char *button : {"pushButton_Log", "pushButton_update", "pushButton_Power"})
                FormRig::press(button);
        });
        FormRig::press("pushButton_Log");
        QCOMPARE(readFile(m_disk + "/log/pelora.log").size(), 20000);
        QCOMPARE(readFile(m_disk + "/log/pelora.log1") + readFile(m_disk + "/log/ydata.csv3"),
                 QByteArray("pelora.log1ydata.csv3"));
        QStringList files = QDir(m_disk + "/log").entryList(QDir::Files);
        QVERIFY(files.filter(QRegExp("md5|4")).isEmpty());
        QCOMPARE(m_log->count("open file error"), 20 - files.size());
        QVERIFY(!msgForm()->isTaken() && restarts() == 0 && QFile::exists(m_disk + "/Lamorel.7z"));
        QVERIFY(FormRig::text("label_disk").contains(QString::number(files.size())));
    }

    void diskPulled()
    {
        for (int copy : {1, 2, 4}) {
            plug();
            duringCopy(copy, [this] { pull(); });
            FormRig::press("pushButton_Log");
            QVERIFY2(m_log->count("open file error") >= 16, qPrintable(m_log->text()));
            QVERIFY(!msgForm()->isTaken() && !isEnabled("pushButton_Log") && !QDir(m_disk).exists());
        }
        plug();
        writeFile(m_disk + "/Lamorel.7z", QByteArray(40000, 's'));
        duringCopy(1, [this] { QFile(m_disk + "/Lamorel.7z").resize(10000); });
        FormRig::press("pushButton_update");
        QVERIFY(restarts() == 0 && !QFile::exists("Pelora.7z") && isEnabled("pushButton_update"));
        QVERIFY(QFile::remove(m_disk + "/Lamorel.7z"));
        QVERIFY(QDir(".").entryList({"*:*"}).isEmpty()); // a letter without a disk is no folder here
    }

    void updates()
    {
        const QString no = "pushButton_No", yes = "pushButton_Yes";
        const struct {
            QStringList packages;
            QString answer;
            int restarts;
        } cases[] = {{{}, {}, 0},
                     {{"Lamorel.7z"}, {}, 1},
                     {{"firmware.7z"}, {}, 1},
                     {{"Pelora620.7z"}, no, 0},
                     {{"Lamorel.7z", "firmware.7z", "Pelora620.7z"}, yes, 3},
                     {{"Pelora621.7z"}, {}, 0}};
        plug();
        for (const auto &row : cases) {
            m_log->clear();
            for (const QString &name : row.packages)
                writeFile(m_disk + '/' + name, name.toLatin1());
            if (!row.answer.isEmpty())
                FormRig::answerLater(row.answer, "是否立即重启完成升级?");
            FormRig::press("pushButton_update");
            const QString last = row.packages.value(row.packages.size() - 1);
            const bool taken = row.restarts > 0 || !row.answer.isEmpty();
            QVERIFY2(restarts() == row.restarts && !msgForm()->isTaken(), qPrintable(last));
            QCOMPARE(readFile("Pelora.7z"), taken ? last.toLatin1() : QByteArray());
            QCOMPARE(QFile::remove("Pelora.7z.md5"), QFile::remove("Pelora.7z"));
            QCOMPARE(QDir(m_disk).entryList({"*.7z"}).isEmpty(), taken || last.isEmpty());
        }
    }

    void warnings()
    {
        for (quint32 id : EventHandler::activeEvents().keys())
            EventHandler::clearEvent(id);
        auto *button = homeForm()->findChild<QAbstractButton *>("pushButton_warning");
        const auto open = [=](const char *count) {
            FormRig::press("pushButton_home");
            const bool calm = button->property("calm").toBool();
            const bool right = button->text() == count && calm == (button->text() == "0");
            button->click();
            return right;
        };
        QVERIFY2(open("0"), qPrintable(button->text()));
        QVERIFY(FormRig::find<QLabel>("label_empty")->isVisible() && tableRows().isEmpty());
        EventHandler::setEvent(0xffff07, QString());
        EventHandler::setEvent(0x33101, " (long) ");
        QVERIFY(open("2"));
        QCOMPARE(tableRows(), (QStringList{"00033101" + EventHandler::eventDetail(0x33101),
                                           "00ffff07" + EventHandler::eventDetail(0xffff07)}));
        auto *table = FormRig::find<QTableView>("tableView");
        QVERIFY(table->isVisible() && table->rowHeight(0) > 3 * table->fontMetrics().height());
        EventHandler::clearEvent(0x33101);
        QCOMPARE(tableRows().size(), 2); // as they were when the page was opened
        FormRig::press("pushButton_back");
        QVERIFY(homeForm()->isVisible() && button->text() == "1");
    }

    void tellsOfTheMachine()
    {
        useInfoConfig()->setValue("SystemTotalRunTime", 412.34);
        useInfoConfig()->setValue("PrintingTotalLayer", 16777219); // more than a float holds
        useInfoConfig()->setValue("UsedStructMaterialWeight", 12.5);
        useInfoConfig()->setValue("UsedSupportMaterialWeight", "much");
        FormRig::press("pushButton_UserInfo");
        QStringList shown;
        for (const char *name :
             {"SystemTotalRunTime", "usedStrWeight", "usedSupWeight", "PrintingTotalLayer"})
            shown << FormRig::text(QString("label_") + name);
        QCOMPARE(shown.join(','), QString("412.3 d,12.50 KG,0.00 KG,16777219"));
        FormRig::press("pushButton_back");
        FormRig::press("pushButton_machineInfo");
        QTRY_COMPARE(FormRig::text("label_hib") + ' ' + FormRig::text("label_slicer"), QString("0.0 1.4.0"));
    }

    void darkScreen()
    {
        QApplication::setDoubleClickInterval(50);
        platformConfig()->setValue("ScreenOffMinutes", 0.005);
        FormRig::press("pushButton_home");
        DarkScreen dark(mainWindow());
        auto *queue = FormRig::find<QAbstractButton>("pushButton_fileList");
        QTRY_VERIFY(dark.isVisible());
        QTest::mouseClick(queue, Qt::LeftButton);
        QVERIFY(!dark.isVisible() && homeForm()->isVisible());
        QTRY_VERIFY(
            (QTest::mouseClick(queue, Qt::LeftButton), fileForm()->isVisible())); // lit: a plain touch
        FormRig::press("pushButton_home");
        QTRY_VERIFY(dark.isVisible());
        QTest::keyClick(queue, Qt::Key_Space);
        QTest::mousePress(queue, Qt::LeftButton); // what follows at once is of the same touch
        QVERIFY(!waitUntil([] { return fileForm()->isVisible(); }, 60));
        QTest::mouseRelease(queue, Qt::LeftButton);
        QVERIFY(homeForm()->isVisible());
        QTRY_VERIFY(dark.isVisible());
        mainWindow()->showMessageForm("", 3, 0x200000, "");
        QVERIFY(!dark.isVisible() && !waitUntil([&] { return dark.isVisible(); }, 700));
        msgForm()->closeMessageForm();
        QTRY_VERIFY(dark.isVisible());
        platformConfig()->setValue("ScreenOffMinutes", 0);
    }

    void powersOff() // last: there is no way back
    {
        for (auto &degrees : m_hib->setPoints)
            degrees = 85;
        m_log->clear();
        FormRig::answerLater("pushButton_No");
        FormRig::press("pushButton_Power");
        QVERIFY(mainWindow()->centralWidget()->isEnabled() && !msgForm()->isTaken() &&
                m_hib->setPoints[8] == 85);

        FormRig::answerLater("pushButton_Yes", "是否关机，请确认，如果进入关机流程，只能断电重启");
        FormRig::answerLater("pushButton_close", "关机中,请稍后..."); // comes again
        bool alone = true;
        QTimer::singleShot(400, this, [&] {
            mainWindow()->setPagesEnabled(true); // a job came to its end
            FormRig::press("pushButton_Power");
            alone = FormRig::message() == "关机中,请稍后..." || FormRig::message().isNull();
        });
        QElapsedTimer cooling;
        cooling.start();
        FormRig::press("pushButton_Power");
        QVERIFY(double(cooling.elapsed()) * timeScale() >= 10 * 60 * 1000);
        QVERIFY(alone && !mainWindow()->centralWidget()->isEnabled());
        for (const auto &degrees : m_hib->setPoints)
            QCOMPARE(degrees.load(), 0.f);
        QCOMPARE(FormRig::message(), QString("请关闭电源"));
        QCOMPARE(m_log->count("taken as done: poweroff"), 1);
        QVERIFY(!FormRig::find<QAbstractButton>("pushButton_close")->isVisible());
    }
};

FORM_TEST_MAIN(TestTool)
#include "test_tool.moc"
