// The rotating logs and what reaches them.

#include "frame/RotatingLog.h"
#include "platform/Log.h"
#include "support/TestInstall.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>

#include <thread>
#include <unistd.h>

class TestLog : public QObject
{
    Q_OBJECT
private slots:
    void init() { m_install = std::make_unique<TestInstall>(); }
    void writesLines();
    void rotatesAndLosesOneLine();
    void fullSizeIsTheLimit();
    void missingFolderIsSilent();
    void threadsDoNotMixLines();
    void warningsGoToTheFileAndDebugToTheConsole();

private:
    std::unique_ptr<TestInstall> m_install;
};

void TestLog::writesLines()
{
    QCOMPARE(logPath("a.csv"), QString("../.PeloraTemp/log/a.csv"));
    RotatingLog log("a.csv");
    QVERIFY(!QFile::exists(logPath("a.csv")));
    log.writeLine("墨瓶,1");
    log.writeLine("");
    static const QRegularExpression form(
        R"(^(\d\d\.\d\d\.\d\d \d\d:\d\d:\d\d\.\d{1,3}),墨瓶,1\r\n[\d.: ]+,\r\n$)");
    const QString text = QString::fromUtf8(m_install->log("a.csv"));
    QVERIFY2(form.match(text).hasMatch(), qPrintable(text));
    RotatingLog("a.csv").writeLine("a later run goes on");
    QCOMPARE(m_install->log("a.csv").count('\n'), 3);
}

void TestLog::rotatesAndLosesOneLine()
{
    // A line is longer than 10 bytes, so every second call finds the file full.
    RotatingLog log("b.log", 10, 4);
    writeFile(logPath("b.log5"), "untouched");
    for (int i = 0; i < 12; ++i)
        log.writeLine(QString("line %1").arg(i));
    QVERIFY(!QFile::exists(logPath("b.log"))); // the next line makes it
    for (int generation = 1; generation <= 4; ++generation) {
        const QByteArray text = m_install->log(QString("b.log%1").arg(generation));
        QVERIFY2(text.endsWith(QString(",line %1\r\n").arg(12 - 2 * generation).toUtf8()), text);
        QCOMPARE(text.count('\n'), 1);
    }
    QCOMPARE(m_install->log("b.log5"), QByteArray("untouched"));
    log.writeLine("again");
    QVERIFY(m_install->log("b.log").endsWith(",again\r\n"));
}

void TestLog::fullSizeIsTheLimit()
{
    QCOMPARE(logMaxSize, 16777216);
    writeFile(logPath("c.log"), "");
    QVERIFY(QFile::resize(logPath("c.log"), logMaxSize - 1));
    RotatingLog log("c.log");
    log.writeLine(QString(1000, 'x'));
    QVERIFY(QFileInfo(logPath("c.log")).size() > logMaxSize + 1000 - 1);
    log.writeLine("lost");
    QVERIFY(!QFile::exists(logPath("c.log")));
    QVERIFY(QFileInfo(logPath("c.log1")).size() > logMaxSize);
}

void TestLog::missingFolderIsSilent()
{
    QVERIFY(QDir("../.PeloraTemp").removeRecursively());
    RotatingLog log("d.log");
    log.writeLine("vanishes");
    QVERIFY(QDir().mkpath("../.PeloraTemp/log"));
    log.writeLine("comes");
    QVERIFY(m_install->log("d.log").endsWith(",comes\r\n"));
}

void TestLog::threadsDoNotMixLines()
{
    RotatingLog log("e.log", 20000, 4);
    std::vector<std::thread> writers;
    for (int i = 0; i < 4; ++i) {
        writers.emplace_back([&log, i] {
            for (int n = 0; n < 500; ++n)
                log.writeLine(QString(20, QChar('a' + i)));
        });
    }
    for (std::thread &writer : writers)
        writer.join();
    static const QRegularExpression form(R"(^[\d.: ]+,(a{20}|b{20}|c{20}|d{20})\r$)");
    for (const QString &name : QDir("../.PeloraTemp/log").entryList({"e.log*"})) {
        QList<QByteArray> lines = m_install->log(name).split('\n');
        QCOMPARE(lines.takeLast(), QByteArray());
        for (const QByteArray &line : lines)
            QVERIFY2(form.match(line).hasMatch(), line);
    }
}

void TestLog::warningsGoToTheFileAndDebugToTheConsole()
{
    int ends[2];
    QVERIFY(::pipe(ends) == 0);
    const int console = ::dup(STDOUT_FILENO);
    ::dup2(ends[1], STDOUT_FILENO);
    const QtMessageHandler previous = qInstallMessageHandler(logMessageHandler);
    qDebug() << "to the console 墨";
    const auto inLambda = [] { LOG_WARNING(QString("text \r\n")); };
    inLambda();
    qInfo() << "info";
    qCritical("critical");
    qInstallMessageHandler(previous);
    ::dup2(console, STDOUT_FILENO);
    ::close(console);
    ::close(ends[1]);
    char block[256];
    const ssize_t count = ::read(ends[0], block, sizeof(block)); // there at once: each line is flushed
    ::close(ends[0]);
    QCOMPARE(QByteArray(block, int(count)), QByteArray("to the console 墨\r\n"));
    const QString text = QString::fromUtf8(m_install->log("pelora.log"));
    static const QRegularExpression form(R"(^[\d.: ]+,"\[func: operator \(\) line:\d+\]text \\r\\n"\r\n)"
                                         R"([\d.: ]+,info\r\n[\d.: ]+,critical\r\n$)");
    QVERIFY2(form.match(text).hasMatch(), qPrintable(text));
}

QTEST_GUILESS_MAIN(TestLog)
#include "test_log.moc"
