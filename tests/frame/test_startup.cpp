// The folders at start, the run-time counter, and the whole start sequence around a window of the test's own.

#include "frame/Folders.h"
#include "frame/JsonConfig.h"
#include "frame/SqliteUtil.h"
#include "frame/Startup.h"
#include "platform/PlatformSettings.h"
#include "support/TestInstall.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QProcess>
#include <QSqlRecord>
#include <QTest>
#include <QTimer>

class TestStartup : public QObject
{
    Q_OBJECT
private slots:
    void removesFolders();
    void clearsAndCreatesFolders();
    void countsRunTime();
    void startsAndEnds();
};

void TestStartup::removesFolders()
{
    TestInstall install;
    QVERIFY(!removeFolder("") && !removeFolder("nowhere") && !removeFolder("config/Sys.json"));
    QDir().mkpath("a/b/.hidden/c");
    writeFile("a/b/.hidden/file", "x");
    writeFile("a/图 1", "x");
    QVERIFY(QFile::link("../config", "a/link") && QFile::link("nowhere", "a/broken"));
    QVERIFY(removeFolder("a"));
    QVERIFY(!QFile::exists("a"));
    QVERIFY(QFile::exists("config/Sys.json")); // what a link points to stays
}

void TestStartup::clearsAndCreatesFolders()
{
    TestInstall install;
    for (const char *folder : {"ring.tzl/sub", "ring_tzl", "RING.TZL", "log/sub", "model/x.tzl", "sub"})
        QDir().mkpath(folder);
    writeFile("file.tzl", "x");
    writeFile("log/sub/old", "x");
    writeFile("../.PeloraTemp/log/pelora.log", "earlier run");
    prepareFolders();
    for (const char *gone : {"ring.tzl", "ring_tzl", "log"})
        QVERIFY2(!QFile::exists(gone), gone);
    for (const char *there : {"RING.TZL", "file.tzl", "model/x.tzl", "config/Sys.json", "sub"})
        QVERIFY2(QFile::exists(there), there);
    QCOMPARE(install.log("pelora.log"), QByteArray("earlier run"));
    QDir("../.PeloraTemp").removeRecursively();
    prepareFolders(); // parents before children
    QVERIFY(QFile::exists("../.PeloraTemp/log") && QFile::exists("../.PeloraTemp/HistoryIcon"));

    // The whole path counts: an installation in such a folder loses all it has.
    QVERIFY(QDir(install.parent()).rename("install", "in_tzl"));
    QDir::setCurrent(install.parent() + "/in_tzl");
    prepareFolders();
    QVERIFY(!QFile::exists("sub") && !QFile::exists("config/Sys.json") && QFile::exists("config"));
    QDir::setCurrent("/");
}

void TestStartup::countsRunTime()
{
    TestInstall install;
    const QString path = "config/UseInfo.json";
    writeFile(path, R"({"SystemSingleRunTime":9,"SystemTotalRunTime":16777216,"PrintTotalTime":5})");
    startRunTimeCounter();
    QVERIFY(readFile(path).contains("9")); // in memory only
    for (const double hours : {0.16666666666666666, double(float(1 / 6.0)) + 0.16666666666666666}) {
        countRunTime(); // each round passes through a 32-bit float
        const JsonConfig disk(path);
        QCOMPARE(disk.getValue("SystemSingleRunTime").toDouble(), hours);
        QCOMPARE(disk.getValue("SystemTotalRunTime").toDouble(), 16777216 + 0.006944444444444444);
        QCOMPARE(disk.getFloat("PrintTotalTime"), 5.0f);
        const QDateTime on = QDateTime::fromString(disk.getString("PowerOn"), "yyyy-MM-dd hh:mm:ss");
        QVERIFY(on.isValid() && qAbs(on.secsTo(QDateTime::currentDateTime())) < 60);
    }
}

// In children, since a process starts once; without lan.qm first.
void TestStartup::startsAndEnds()
{
    TestInstall install;
    install.setPlatform({{"COM5", "/dev/x"}});
    writeFile("lan.ts", R"(<?xml version="1.0" encoding="utf-8"?><!DOCTYPE TS><TS version="2.1"><context>
        <name>EventHandler</name><message><source>停止打印</source><translation>Stopped</translation></message>
        </context></TS>)");
    for (const char *text : {"停止打印", "Stopped"}) {
        QFile::remove("config/UseInfo.json");
        QDir().mkdir("left.tzl");
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {"--start"});
        QVERIFY(child.waitForFinished(20000));
        QCOMPARE(child.exitStatus(), QProcess::NormalExit);
        QCOMPARE(child.exitCode(), 42);
        const QByteArray output = child.readAllStandardOutput();
        const QByteArray lines =
            QByteArray(text) + " /dev/x model 1 left 0 columns 14\r\nvisible 1 counter 1\r\n";
        QVERIFY2(output.contains(lines), output);
        QVERIFY(install.log("pelora.log").contains(",\"[func: "));
        QCOMPARE(QProcess::execute(LRELEASE, {"-silent", "lan.ts", "-qm", "lan.qm"}), 0);
    }
}

static int startForReal(int argc, char **argv)
{
    return runApplication(argc, argv, [] {
        auto *window = new QWidget;
        QSqlQueryModel model;
        sqliteUtil()->ExecuteQueryModel(&model, "select * from PrintQueue");
        qDebug("%s %s model %d left %d columns %d",
               qPrintable(QCoreApplication::translate("EventHandler", "停止打印")),
               qPrintable(platformSetting("COM5").toString()), QFile::exists("model"),
               QFile::exists("left.tzl"), model.record().count());
        QTimer::singleShot(0, window, [window] {
            const bool counted = waitUntil([] { return QFile::exists("config/UseInfo.json"); });
            qDebug("visible %d counter %d", window->isVisible(), counted);
            QCoreApplication::exit(42);
        });
        return window;
    });
}

int main(int argc, char **argv)
{
    if (argc > 1 && QByteArray(argv[1]) == "--start")
        return startForReal(argc, argv);
    QCoreApplication application(argc, argv);
    TestStartup test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_startup.moc"
