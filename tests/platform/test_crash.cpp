// A process that really crashes leaves its dump and dies of its signal.

#include "support/TestInstall.h"

#include <QDir>
#include <QProcess>
#include <QTest>

#include <csignal>

class TestCrash : public QObject
{
    Q_OBJECT
private slots:
    void leavesADump()
    {
        const std::tuple<const char *, int, const char *> rows[] = {
            {"memory", SIGSEGV, "address: 0x0000000000000008\n"},
            {"stack", SIGSEGV, " crasher\nregisters:\n"},
            {"thread", SIGFPE, " crashing with a\nregisters:\n"}};
        for (const auto &[how, signal, part] : rows) {
            TestInstall install;
            for (const char *folder : {"nowhere/", "../.PeloraTemp/log/"}) {
                QProcess child;
                child.start(CRASHER, {how, folder});
                QVERIFY(child.waitForFinished());
                QCOMPARE(child.exitStatus(), QProcess::CrashExit);
                QCOMPARE(child.exitCode(), signal);
            }
            const QStringList dumps = QDir("../.PeloraTemp/log").entryList({"*.dmp"});
            QVERIFY(QRegularExpression("^20\\d{12}\\.dmp$").match(dumps.join(' ')).hasMatch());
            const QByteArray dump = install.log(dumps.first());
            QVERIFY2(dump.startsWith("signal: " + QByteArray::number(signal) + "\n") && dump.contains(part),
                     dump);
            const QByteArray trace = dump.mid(dump.indexOf("backtrace:\n"));
            QVERIFY(trace.left(trace.indexOf("modules:\n")).contains("/crasher"));
        }
    }
};

QTEST_GUILESS_MAIN(TestCrash)
#include "test_crash.moc"
