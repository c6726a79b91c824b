// The rotating logs and what reaches them.

#include "frame/RotatingLog.h"
#include "platform/Log.h"
#include "support/TestInstall.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>

#include <thread>

class TestLog : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestInstall> m_install;

private slots:
    void init() { m_install = std::make_unique<TestInstall>(); }

    void rotatesAndLosesOneLine()
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
    }

    void threadsDoNotMixLines()
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
        static const QRegularExpression form(
            R"(^(\d\d\.\d\d\.\d\d [\d:]{8}\.\d{1,3},(a{20}|b{20}|c{20}|d{20})\r\n)*$)");
        for (const QString &name : QDir("../.PeloraTemp/log").entryList({"e.log*"}))
            QVERIFY2(form.match(m_install->log(name)).hasMatch(), qPrintable(name));
    }

    void warningsGoToTheFile()
    {
        const QtMessageHandler previous = qInstallMessageHandler(logMessageHandler);
        [] { LOG_WARNING(QString("text \r\n")); }();
        qInfo() << "info";
        qCritical("critical");
        qInstallMessageHandler(previous);
        const QString text = QString::fromUtf8(m_install->log("pelora.log"));
        static const QRegularExpression form(R"(^[\d.: ]+,"\[func: operator \(\) line:\d+\]text \\r\\n"\r\n)"
                                             R"([\d.: ]+,info\r\n[\d.: ]+,critical\r\n$)");
        QVERIFY2(form.match(text).hasMatch(), qPrintable(text));
    }
};

QTEST_GUILESS_MAIN(TestLog)
#include "test_log.moc"
