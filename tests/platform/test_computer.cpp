// What the program asks of its computer: time, events between threads, disk, adapters, tools, volumes.

#include "platform/Adapters.h"
#include "platform/AutoResetEvent.h"
#include "platform/Clock.h"
#include "platform/DiskSpace.h"
#include "platform/SystemControl.h"
#include "platform/ToolProcesses.h"
#include "platform/Volumes.h"
#include "platform/WriteThroughFile.h"
#include "support/LogCapture.h"
#include "support/TestInstall.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QStorageInfo>
#include <QTest>

#include <thread>

class TestComputer : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestInstall> m_install;

private slots:
    void init() { m_install = std::make_unique<TestInstall>(); }
    void sleepsAndWaits();
    void writesThrough();
    void tellsDiskAndAdapters();
    void neverRestartsADesk();
    void killsOnlyItsOwnTools_data();
    void killsOnlyItsOwnTools();
    void lettersFollowTheVolumes();
    void mediaFolderMayComeLater();
};

void TestComputer::sleepsAndWaits()
{
    QElapsedTimer timer;
    timer.start();
    Sleep(5000); // scaled to 50
    QVERIFY(timer.elapsed() >= 50 && timer.elapsed() < 4000);

    AutoResetEvent event;
    event.set();
    event.set();
    QVERIFY(event.wait(0));
    QVERIFY(!event.wait(0)); // one set lets one wait through
    event.set();
    event.reset();
    timer.start();
    QVERIFY(!event.wait(30)); // a real time-out
    QVERIFY(timer.elapsed() >= 30);
    std::thread other([&] { event.set(); });
    const bool woken = event.wait(5000);
    other.join();
    QVERIFY(woken);
}

void TestComputer::writesThrough()
{
    const QString path = QStringLiteral("config/图 \"1\".bin");
    writeFile(path, "longer than what comes");
    QVERIFY(writeThrough(path, "a\0b\r\n", 5));
    QCOMPARE(readFile(path), QByteArray("a\0b\r\n", 5));
    for (const char *bad : {"nowhere/x", "config", "/dev/full"})
        QVERIFY2(!writeThrough(bad, "a", 1), bad);
}

void TestComputer::tellsDiskAndAdapters()
{
    QCOMPARE(diskSpace(".").totalGB, QStorageInfo(m_install->folder()).bytesTotal() / double(1 << 30));
    QCOMPARE(diskSpace("nowhere/x").totalGB, 0.0);
    m_install->setPlatform({{"DiskTotalGB", 200}, {"DiskAvailableGB", 81.5}});
    QCOMPARE(diskSpace(".").totalGB, 200.0);
    QCOMPARE(diskSpace(".").availableGB, 81.5);
    for (const AdapterInfo &adapter : adapters()) {
        const QByteArray vendor = readFile("/sys/class/net/" + adapter.name + "/device/vendor");
        QCOMPARE(adapter.description.contains("Intel(R)"), vendor.startsWith("0x8086"));
        QVERIFY(adapter.name != "lo" && !adapter.mac.contains(':'));
    }
}

void TestComputer::neverRestartsADesk()
{
    for (const QJsonValue &notAllowed :
         {QJsonValue(), QJsonValue(false), QJsonValue("true"), QJsonValue(1)}) {
        m_install->setPlatform({{"AllowSystem", notAllowed}});
        LogCapture log;
        QVERIFY(restartSystem() && powerOffSystem());
        QCOMPARE(log.count("taken as done: "), 2);
    }
}

void TestComputer::killsOnlyItsOwnTools_data()
{
    QTest::addColumn<QByteArray>("firstLine");
    QTest::newRow("program") << QByteArray();
    QTest::newRow("script with an option") << QByteArray("#!/bin/sh -e");
    QTest::newRow("script through env") << QByteArray("#!/usr/bin/env sh");
}

void TestComputer::killsOnlyItsOwnTools()
{
    QFETCH(QByteArray, firstLine);
    const QString other = m_install->parent() + "/other";
    for (const QString &folder : {QString("Lamorel"), other}) {
        const QString tool = folder + "/lamorel.exe";
        QVERIFY(QDir().mkpath(folder));
        if (firstLine.isEmpty())
            QVERIFY(QFile::copy("/bin/cat", tool));
        else
            writeFile(tool, firstLine + "\nwhile read -r line; do echo $line; done\n");
        QVERIFY(QFile::setPermissions(tool, QFile::ReadOwner | QFile::ExeOwner));
    }
    QProcess own, stranger, viewer;
    stranger.setWorkingDirectory(other); // another installation's
    own.start("Lamorel/lamorel.exe", QStringList());
    stranger.start(other + "/lamorel.exe", QStringList());
    viewer.start("cat", {"-", "Lamorel/lamorel.exe"}); // has only the name among its arguments
    for (QProcess *process : {&own, &stranger, &viewer}) {
        process->write("up\n"); // comes back when the tool itself runs
        QVERIFY(process->waitForReadyRead());
    }
    static const QRegularExpression form("^lamorel\\.exe (\\d+) Console 1 [0-9,]+ K$");
    QCOMPARE(form.match(imageMemoryText("lamorel.exe")).captured(1).toLongLong(), own.processId());
    QCOMPARE(killImage("postrel.exe"), 0);
    QCOMPARE(killImage("lamorel.exe"), 1);
    QVERIFY(own.waitForFinished());
    QCOMPARE(own.exitStatus(), QProcess::CrashExit);
    QCOMPARE(killImage("lamorel.exe"), 0);
    QCOMPARE(imageMemoryText("lamorel.exe"), QString());
    for (QProcess *process : {&stranger, &viewer}) {
        QCOMPARE(process->state(), QProcess::Running);
        process->kill();
        QVERIFY(process->waitForFinished());
    }
}

static QString letters(const QSignalSpy &arrived)
{
    QString text;
    for (const QList<QVariant> &arguments : arrived)
        text += QChar(arguments.first().value<quint8>());
    return text;
}

void TestComputer::lettersFollowTheVolumes()
{
    const QString media = m_install->parent() + "/media/";
    QDir().mkpath(media + "stick");
    m_install->setPlatform({{"MediaFolder", m_install->parent() + "/media"}});
    VolumeWatcher watcher;
    QSignalSpy arrived(&watcher, &VolumeWatcher::arrived);
    QSignalSpy removed(&watcher, &VolumeWatcher::removed);
    QSignalSpy other(&watcher, &VolumeWatcher::otherChange);
    watcher.start();
    QVERIFY(arrived.isEmpty()); // whoever starts it can still connect
    QTRY_COMPARE(letters(arrived), QString("E"));
    QDir().mkdir(media + "a second");
    QTRY_COMPARE(letters(arrived), QString("EF"));
    QCOMPARE(volumePath("E:\\sub\\x.tzl"), media + "stick/sub/x.tzl");
    QCOMPARE(volumePath("f:"), media + "a second/");
    QCOMPARE(volumePath("G:\\x"), QString("G:/x"));
    writeFile(media + "note.txt", "no volume");
    QTRY_VERIFY(!other.isEmpty());

    // The letter that is free is given again, the other stays with its folder.
    QVERIFY(QDir(media + "stick").removeRecursively());
    QTRY_COMPARE(removed.size(), 1);
    QCOMPARE(volumePath("E:\\x"), QString("E:/x"));
    QDir().mkdir(media + "third");
    QTRY_COMPARE(letters(arrived), QString("EFE"));
    QCOMPARE(volumePath("E:\\x"), media + "third/x");
    QCOMPARE(volumePath("F:\\x"), media + "a second/x");
}

void TestComputer::mediaFolderMayComeLater()
{
    const QString media = m_install->parent() + "/later";
    m_install->setPlatform({{"MediaFolder", media}});
    VolumeWatcher watcher;
    QSignalSpy arrived(&watcher, &VolumeWatcher::arrived);
    watcher.start();
    for (int i = 0; i < 30; ++i) // more than there are letters: the last ones have none
        QDir().mkpath(media + QString("/v%1").arg(i, 2, 10, QChar('0')));
    QTRY_VERIFY(letters(arrived).endsWith('Z'));
    QCOMPARE(volumePath("Z:\\x"), media + "/v21/x");
    QCOMPARE(volumePath("[:\\x"), QString("[:/x"));
}

QTEST_GUILESS_MAIN(TestComputer)
#include "test_computer.moc"
