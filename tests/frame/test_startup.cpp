// The folders at start, the run-time counter, and the whole start sequence around a window of the test's own.

#include "frame/Folders.h"
#include "frame/JsonConfig.h"
#include "frame/PrintStatus.h"
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
    void wholePathCounts();
    void namesPaths();
    void countsRunTime();
    void startsAndEnds_data();
    void startsAndEnds();
};

void TestStartup::removesFolders()
{
    TestInstall install;
    QVERIFY(!removeFolder(""));
    QVERIFY(!removeFolder("nowhere"));
    QDir().mkpath("a/b/.hidden/c");
    QDir().mkpath("kept");
    writeFile("kept/file", "x");
    writeFile("a/b/.hidden/file", "x");
    writeFile("a/图 1", "x");
    QVERIFY(QFile::link("../kept", "a/link"));
    QVERIFY(QFile::link("nowhere", "a/broken"));
    QVERIFY(removeFolder("a"));
    QVERIFY(!QFile::exists("a"));
    QCOMPARE(readFile("kept/file"), QByteArray("x"));
    QVERIFY(!removeFolder("kept/file"));
}

void TestStartup::clearsAndCreatesFolders()
{
    TestInstall install;
    for (const char *folder : {"ring.tzl/sub", "ring_tzl", "RING.TZL", "a.tzl.b", "log/sub", "model/x.tzl"})
        QDir().mkpath(folder);
    writeFile("file.tzl", "x");
    writeFile("log/sub/old", "x");
    writeFile("../.PeloraTemp/log/pelora.log", "earlier run");
    QDir("config").removeRecursively();
    prepareFolders();
    for (const char *gone : {"ring.tzl", "ring_tzl", "a.tzl.b", "log"})
        QVERIFY2(!QFile::exists(gone), gone);
    for (const char *there : {"RING.TZL", "file.tzl", "model/x.tzl", "config", "../.PeloraTemp/HistoryIcon"})
        QVERIFY2(QFile::exists(there), there);
    QCOMPARE(install.log("pelora.log"), QByteArray("earlier run"));

    QDir("../.PeloraTemp").removeRecursively();
    prepareFolders(); // parents before children
    QVERIFY(QFile::exists("../.PeloraTemp/log"));
}

void TestStartup::wholePathCounts()
{
    TestInstall install;
    QDir().mkpath("in_tzl/sub/deep");
    QDir::setCurrent("in_tzl");
    prepareFolders();
    QVERIFY(!QFile::exists("sub"));
    QVERIFY(QFile::exists("model"));
}

void TestStartup::namesPaths()
{
    QCOMPARE(modelPath("a b.tzl"), QString("model/a b.tzl"));
    QCOMPARE(modelIniPath("a.tzl"), QString("model/a.tzl.ini"));
    QCOMPARE(sliceFolder("a.tzl"), QString("../.PeloraTemp/a.tzl"));
    QCOMPARE(historyIconPath("i"), QString("../.PeloraTemp/HistoryIcon/i"));
    QCOMPARE(printStatus().load(), int(PrintStatusIdle));
}

void TestStartup::countsRunTime()
{
    TestInstall install;
    const QString path = "config/UseInfo.json";
    writeFile(path, R"({"SystemSingleRunTime":9,"SystemTotalRunTime":16777216,"PrintTotalTime":5})");
    const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
    startRunTimeCounter();
    QVERIFY(readFile(path).contains("9")); // in memory only
    const QDateTime powerOn =
        QDateTime::fromString(useInfoConfig()->getString("PowerOn"), "yyyy-MM-dd hh:mm:ss");
    QVERIFY(powerOn >= before && powerOn <= QDateTime::currentDateTime());
    countRunTime();
    JsonConfig disk(path);
    QCOMPARE(disk.getValue("SystemSingleRunTime").toDouble(), 0.16666666666666666);
    QCOMPARE(disk.getValue("SystemTotalRunTime").toDouble(), 16777216 + 0.006944444444444444);
    QCOMPARE(disk.getFloat("PrintTotalTime"), 5.0f);
    QCOMPARE(disk.getString("PowerOn"), powerOn.toString("yyyy-MM-dd hh:mm:ss"));
    countRunTime(); // each round passes through a 32-bit float
    disk.Init(path);
    QCOMPARE(disk.getValue("SystemSingleRunTime").toDouble(), double(float(1 / 6.0)) + 0.16666666666666666);
    QCOMPARE(disk.getValue("SystemTotalRunTime").toDouble(), 16777216 + 0.006944444444444444);
}

void TestStartup::startsAndEnds_data()
{
    QTest::addColumn<bool>("translated");
    QTest::addColumn<QString>("text");
    QTest::newRow("source language") << false << "停止打印";
    QTest::newRow("translated") << true << "Stopped";
}

// Runs in a child, since a process starts once.
void TestStartup::startsAndEnds()
{
    QFETCH(bool, translated);
    QFETCH(QString, text);
    TestInstall install;
    install.setPlatform({{"COM5", "/dev/x"}});
    QFile::remove("config/UseInfo.json");
    QDir().mkdir("left.tzl");
    if (translated) {
        writeFile("lan.ts", R"(<?xml version="1.0" encoding="utf-8"?><!DOCTYPE TS><TS version="2.1"><context>
            <name>EventHandler</name><message><source>停止打印</source>
            <translation>Stopped</translation></message></context></TS>)");
        QCOMPARE(QProcess::execute(LRELEASE, {"-silent", "lan.ts", "-qm", "lan.qm"}), 0);
    }
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), {"--start"});
    QVERIFY(child.waitForFinished(20000));
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    QCOMPARE(child.exitCode(), 42);
    const QByteArray output = child.readAllStandardOutput();
    for (const QString &line : {text, QString("visible 1"), QString("com /dev/x"), QString("folders 1 0"),
                                QString("columns 14"), QString("counter 1")})
        QVERIFY2(output.contains(line.toUtf8()), output);
    QVERIFY(install.log("pelora.log").contains(",\"[func: "));
    QVERIFY(JsonConfig("config/UseInfo.json").getFloat("SystemSingleRunTime") > 0);
    QCOMPARE(QDir(".").entryList({"*.tzl"}).size(), 0);
}

namespace
{
void say(const QString &text)
{
    qDebug("%s", qPrintable(text));
}

int startForReal(int argc, char **argv)
{
    return runApplication(argc, argv, [] {
        auto *window = new QWidget;
        say(QCoreApplication::translate("EventHandler", "停止打印"));
        say("com " + platformSetting("COM5").toString());
        say(QString("folders %1 %2").arg(QFile::exists("model")).arg(QFile::exists("left.tzl")));
        QSqlQueryModel model;
        sqliteUtil()->ExecuteQueryModel(&model, "select * from PrintQueue");
        say(QString("columns %1").arg(model.record().count()));
        QTimer::singleShot(0, window, [window] {
            say(QString("visible %1").arg(window->isVisible()));
            say(QString("counter %1").arg(waitUntil([] { return QFile::exists("config/UseInfo.json"); })));
            QCoreApplication::exit(42);
        });
        return window;
    });
}
} // namespace

int main(int argc, char **argv)
{
    if (argc > 1 && QByteArray(argv[1]) == "--start")
        return startForReal(argc, argv);
    QCoreApplication application(argc, argv);
    TestStartup test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_startup.moc"
