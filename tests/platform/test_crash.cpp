// A process that really crashes leaves its dump and dies of its signal.

#include "support/TestInstall.h"

#include <QDateTime>
#include <QDir>
#include <QProcess>
#include <QTest>

#include <csignal>

class TestCrash : public QObject
{
    Q_OBJECT
private slots:
    void leavesADump_data()
    {
        QTest::addColumn<QString>("how");
        QTest::addColumn<int>("signal");
        QTest::addColumn<QByteArray>("part");
        QTest::newRow("memory") << "memory" << SIGSEGV << QByteArray("address: 0x0000000000000008\n");
        QTest::newRow("abort") << "abort" << SIGABRT << QByteArray(" crasher\nregisters:\n");
        QTest::newRow("stack overflow") << "stack" << SIGSEGV << QByteArray(" crasher\nregisters:\n");
        QTest::newRow("other thread") << "thread" << SIGFPE << QByteArray(" crashing with a\nregisters:\n");
    }
    void leavesADump()
    {
        QFETCH(QString, how);
        QFETCH(int, signal);
        QFETCH(QByteArray, part);
        TestInstall install;
        const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
        for (const QString folder : {"nowhere/", "../.PeloraTemp/log/"}) {
            QProcess child;
            child.start(CRASHER, {how, folder});
            QVERIFY(child.waitForFinished());
            QCOMPARE(child.exitStatus(), QProcess::CrashExit);
            QCOMPARE(child.exitCode(), signal);
        }
        const QStringList dumps = QDir("../.PeloraTemp/log").entryList({"*.dmp"});
        QCOMPARE(dumps.size(), 1);
        const QDateTime time = QDateTime::fromString(dumps.first().chopped(4), "yyyyMMddhhmmss");
        QVERIFY2(time >= before && time <= QDateTime::currentDateTime(), qPrintable(dumps.first()));
        const QByteArray dump = install.log(dumps.first());
        QVERIFY2(dump.startsWith("signal: " + QByteArray::number(signal) + "\n") && dump.contains(part),
                 dump);
        const QByteArray trace = dump.mid(dump.indexOf("backtrace:\n"));
        QVERIFY(trace.left(trace.indexOf("modules:\n")).contains("/crasher"));
        QVERIFY(trace.mid(trace.indexOf("modules:\n")).contains("libc.so"));
    }
};

QTEST_GUILESS_MAIN(TestCrash)
#include "test_crash.moc"
