// A process that really crashes leaves its dump and dies of its signal.

#include "support/TestInstall.h"

#include <QDateTime>
#include <QDir>
#include <QProcess>
#include <QTest>

#include <csignal>
#include <sys/resource.h>

class TestCrash : public QObject
{
    Q_OBJECT
private slots:
    void leavesADump_data();
    void leavesADump();
    void diesAlsoWithoutAFolder();
};

void TestCrash::leavesADump_data()
{
    QTest::addColumn<QString>("how");
    QTest::addColumn<int>("signal");
    QTest::addColumn<QByteArray>("thread");
    QTest::newRow("memory") << "memory" << SIGSEGV << QByteArray("crasher");
    QTest::newRow("abort") << "abort" << SIGABRT << QByteArray("crasher");
    QTest::newRow("stack overflow") << "stack" << SIGSEGV << QByteArray("crasher");
    QTest::newRow("other thread") << "thread" << SIGFPE << QByteArray("crashing");
}

void TestCrash::leavesADump()
{
    QFETCH(QString, how);
    QFETCH(int, signal);
    QFETCH(QByteArray, thread);
    TestInstall install;
    const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
    QProcess child;
    child.start(CRASHER, {how, "../.PeloraTemp/log/"});
    QVERIFY(child.waitForFinished());
    QCOMPARE(child.exitStatus(), QProcess::CrashExit);
    QCOMPARE(child.exitCode(), signal);

    const QStringList dumps = QDir("../.PeloraTemp/log").entryList({"*.dmp"});
    QCOMPARE(dumps.size(), 1);
    const QDateTime time = QDateTime::fromString(dumps.first().chopped(4), "yyyyMMddhhmmss");
    QVERIFY2(time >= before && time <= QDateTime::currentDateTime(), qPrintable(dumps.first()));
    const QByteArray dump = install.log(dumps.first());
    QVERIFY(dump.startsWith("signal: " + QByteArray::number(signal) + "\n"));
    QVERIFY(dump.contains(' ' + thread + "\nregisters:\n"));
    if (how == "memory")
        QVERIFY(dump.contains("address: 0x0000000000000008\n"));
    const QByteArray trace = dump.mid(dump.indexOf("backtrace:\n"));
    QVERIFY(trace.left(trace.indexOf("modules:\n")).count("crasher") > 1);
    QVERIFY(trace.mid(trace.indexOf("modules:\n")).contains("libc.so"));
}

void TestCrash::diesAlsoWithoutAFolder()
{
    TestInstall install;
    QProcess child;
    child.start(CRASHER, {"memory", "nowhere/"});
    QVERIFY(child.waitForFinished());
    QCOMPARE(child.exitCode(), int(SIGSEGV));
}

int main(int argc, char **argv)
{
    const rlimit none{0, 0};
    setrlimit(RLIMIT_CORE, &none); // the children crash on purpose
    QCoreApplication application(argc, argv);
    TestCrash test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_crash.moc"
