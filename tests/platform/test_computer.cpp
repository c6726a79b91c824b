// What the program asks of its computer: time, events between threads, disk, adapters, identity.

#include "platform/Adapters.h"
#include "platform/AutoResetEvent.h"
#include "platform/Clock.h"
#include "platform/DiskSpace.h"
#include "platform/MachineId.h"
#include "platform/SystemControl.h"
#include "platform/ThreadName.h"
#include "platform/WriteThroughFile.h"
#include "support/LogCapture.h"
#include "support/TestInstall.h"

#include <QRegularExpression>
#include <QStorageInfo>
#include <QTest>

#include <sys/wait.h>
#include <thread>
#include <unistd.h>

class TestComputer : public QObject
{
    Q_OBJECT
private slots:
    void sleepIsScaled();
    void oneSetLetsOneWaitThrough();
    void setWakesAWaiter();
    void writesThrough();
    void namesTheThread();
    void tellsTheDisk();
    void neverRestartsADesk();
    void endsAtOnce();
    void tellsAdaptersAndIdentity();
};

void TestComputer::sleepIsScaled()
{
    QCOMPARE(timeScale(), 100.0);
    QElapsedTimer timer;
    timer.start();
    Sleep(5000);
    QVERIFY(timer.elapsed() >= 50);
    QVERIFY(timer.elapsed() < 4000);
}

void TestComputer::oneSetLetsOneWaitThrough()
{
    AutoResetEvent event;
    QVERIFY(!event.wait(0));
    event.set();
    event.set();
    QVERIFY(event.wait(0));
    QVERIFY(!event.wait(0));
    event.set();
    event.reset();
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!event.wait(30)); // a real time-out
    QVERIFY(timer.elapsed() >= 30);
}

void TestComputer::setWakesAWaiter()
{
    AutoResetEvent ask;
    AutoResetEvent answer;
    std::thread other([&] {
        for (int i = 0; i < 100; ++i) {
            if (ask.wait(5000))
                answer.set();
        }
    });
    int answered = 0;
    for (int i = 0; i < 100; ++i) {
        ask.set();
        answered += answer.wait(5000);
    }
    other.join();
    QCOMPARE(answered, 100);
}

void TestComputer::writesThrough()
{
    TestInstall install;
    const QString path = QStringLiteral("config/图 \"1\".bin");
    writeFile(path, "longer than what comes");
    QVERIFY(writeThrough(path, "a\0b\r\n", 5));
    QCOMPARE(readFile(path), QByteArray("a\0b\r\n", 5));
    QVERIFY(writeThrough(path, nullptr, 0));
    QCOMPARE(readFile(path), QByteArray());
    QVERIFY(!writeThrough("nowhere/x", "a", 1));
    QVERIFY(!writeThrough("config", "a", 1));
    QVERIFY(!writeThrough("/dev/full", "a", 1));
}

void TestComputer::namesTheThread()
{
    QByteArray name;
    std::thread([&] {
        setThreadName("a name longer than the kernel's");
        name = readFile("/proc/thread-self/comm");
    }).join();
    QCOMPARE(name, QByteArray("a name longer t\n"));
}

void TestComputer::tellsTheDisk()
{
    TestInstall install;
    constexpr double gigabyte = 1 << 30;
    const DiskSpace real = diskSpace(".");
    const QStorageInfo storage{install.folder()};
    QCOMPARE(real.totalGB, storage.bytesTotal() / gigabyte);
    QVERIFY(real.availableGB > 0 && real.availableGB <= real.totalGB);
    QCOMPARE(diskSpace("nowhere/x").totalGB, 0.0);
    install.setPlatform({{"DiskAvailableGB", 81.5}});
    QCOMPARE(diskSpace(".").availableGB, 81.5);
    QCOMPARE(diskSpace(".").totalGB, real.totalGB);
    install.setPlatform({{"DiskTotalGB", 200}, {"DiskAvailableGB", 0}});
    QCOMPARE(diskSpace(".").totalGB, 200.0);
    QCOMPARE(diskSpace(".").availableGB, 0.0);
}

void TestComputer::neverRestartsADesk()
{
    TestInstall install;
    for (const QJsonValue &notAllowed :
         {QJsonValue(), QJsonValue(false), QJsonValue("true"), QJsonValue(1)}) {
        install.setPlatform({{"AllowSystem", notAllowed}});
        LogCapture log;
        QVERIFY(restartSystem());
        QVERIFY(powerOffSystem());
        QCOMPARE(log.count("taken as done: reboot"), 1);
        QCOMPARE(log.count("taken as done: poweroff"), 1);
    }
}

void TestComputer::endsAtOnce()
{
    const pid_t child = fork();
    if (child == 0) {
        std::atexit([] { ::_exit(1); });
        exitNow();
    }
    int status = -1;
    QCOMPARE(waitpid(child, &status, 0), child);
    QVERIFY(WIFEXITED(status));
    QCOMPARE(WEXITSTATUS(status), 0);
}

void TestComputer::tellsAdaptersAndIdentity()
{
    static const QRegularExpression mac("^([0-9A-F]{2}-){5}[0-9A-F]{2}$");
    for (const AdapterInfo &adapter : adapters()) {
        QVERIFY(adapter.name != "lo");
        QVERIFY(adapter.description.endsWith(adapter.name));
        QVERIFY(adapter.mac.isEmpty() || mac.match(adapter.mac).hasMatch());
        QCOMPARE(adapter.ip.isEmpty(), adapter.mask.isEmpty());
        const QString vendor = readFile("/sys/class/net/" + adapter.name + "/device/vendor").trimmed();
        QCOMPARE(adapter.description.contains("Intel(R)"), vendor == "0x8086");
    }
    const QString firmware = readFile("/sys/class/dmi/id/product_uuid").trimmed();
    QCOMPARE(machineId(), firmware.toUpper());
}

QTEST_GUILESS_MAIN(TestComputer)
#include "test_computer.moc"
