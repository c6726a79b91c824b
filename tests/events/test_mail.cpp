// Mails by way of the tool, and the daily one: the tool is a script.

#include "events/EventHandler.h"
#include "events/SendEmail.h"
#include "events/StatusMail.h"
#include "frame/JsonConfig.h"
#include "support/LogCapture.h"
#include "support/TestInstall.h"

#include <QDir>
#include <QTest>

#include <thread>

class TestMail : public QObject
{
    Q_OBJECT
    TestInstall m_install;

    void setTool(const QByteArray &script)
    {
        QDir().mkpath("Postrel");
        writeFile("Postrel/Postrel.exe", "#!/bin/sh\n" + script + '\n');
        QFile::setPermissions("Postrel/Postrel.exe", QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    static QStringList bodyFiles() { return QDir(QDir::tempPath()).entryList(QDir::Files); }

private slots:
    void init()
    {
        QDir("Postrel").removeRecursively();
        QDir().mkpath("tmp");
        qputenv("TMPDIR", QFile::encodeName(QDir("tmp").absolutePath()));
        emailConfig()->syncFile(QStringLiteral("{}"));
        QFile::remove("sent");
    }

    void toolGetsItsArgumentsAndIsHeard()
    {
        const LogCapture log;
        QCOMPARE(SendEmail("absent", "body"), QByteArray("\n"));
        setTool("printf '%s|' \"$@\"; cat \"$6\"; echo ' no' >&2; exit 3");
        const QByteArray heard = SendEmail("a \"b\" 打印", "第一\n");
        const QStringList parts = QString::fromUtf8(heard).split('|');
        QCOMPARE(parts.mid(0, 5), (QStringList{"\n-a", m_install.folder() + "/config/email.json", "-s",
                                               "a \"b\" 打印", "-b"}));
        QCOMPARE(QFileInfo(parts[5]).path(), QDir::tempPath());
        QVERIFY(qAbs(QFileInfo(parts[5]).fileName().toLongLong() - QDateTime::currentSecsSinceEpoch()) < 10);
        QCOMPARE(parts[6], QString("第一\n no\n"));
        QCOMPARE(log.count("[func: SendEmail "), 2);
        QCOMPARE(SendEmail("empty", ""), QByteArray());
        QCOMPARE(bodyFiles(), QStringList());
        qputenv("TMPDIR", "/proc");
        QCOMPARE(SendEmail("no folder", "body"), QByteArray());
    }

    void hangingToolIsEnded()
    {
        setTool("echo $$; exec sleep 100");
        const QByteArray heard = SendEmail("hang", "body", 1000);
        QVERIFY(heard.trimmed().toInt() > 0);
        QVERIFY(!QFile::exists("/proc/" + heard.trimmed()));
        QCOMPARE(bodyFiles(), QStringList());
    }

    void mailsOfOneSecondKeepTheirOwnText()
    {
        setTool("sleep 0.1; cat \"$6\"");
        std::array<QByteArray, 6> heard;
        std::vector<std::thread> threads;
        for (std::size_t i = 0; i < heard.size(); ++i)
            threads.emplace_back([&heard, i] { heard[i] = SendEmail("s", QString::number(i)); });
        for (std::thread &thread : threads)
            thread.join();
        for (std::size_t i = 0; i < heard.size(); ++i)
            QCOMPARE(heard[i], '\n' + QByteArray::number(qulonglong(i)));
    }

    void dailyMailHoldsWhatTheFlagsAskFor()
    {
        const QString bottles = "sup1:1 g    sup2:20g     part3:300g     part4:0g     ";
        const struct {
            const char *flags;
            QList<quint32> active;
            QString body;
        } table[] = {{"{}", {0xffff07, 0x33101}, "\n"},
                     {R"({"Ink":true})", {0x33101}, bottles + "\n"},
                     {R"({"Error":true})", {0xffff07, 0x33101}, "\n"},
                     {R"({"Maintain":true})", {0xffff07, 0x33101}, "\nffff07\n"},
                     {R"({"Maintain":true,"Error":true})", {0xffff07, 0x33101, 0x1}, "\nffff07\n1\n33101\n"},
                     {R"({"Maintain":true,"Error":true,"Ink":true})", {}, bottles + "\n"},
                     {R"({"Maintain":1,"Error":"true","Ink":null})", {0x1}, "\n"}};
        setTool("printf '%s:' \"$4\" >sent; cat \"$6\" >>sent");
        for (const auto &row : table) {
            emailConfig()->syncFile(QString::fromUtf8(row.flags));
            for (const quint32 id : row.active)
                EventHandler::setEvent(id, "");
            StatusMail mail([] { return RestWeights{1, 20, 300, 0}; }, [] { return QTime(11, 30); });
            mail.pass();
            QCOMPARE(QString::fromUtf8(readFile("sent")), "Pelora:" + row.body);
            for (const quint32 id : row.active)
                EventHandler::clearEvent(id);
        }
    }

    void dailyMailGoesOncePerMinuteThatComes()
    {
        const struct {
            const char *times;
            int mails;
        } table[] = {
            {"11:29 11:30 11:30 11:30 11:31 23:59 00:00 11:29", 1},
            {"11:30 11:31 11:30 11:31", 2},       // set back, or the next day
            {"11:30 11:29 11:30", 2},             // set back within the minute's neighbourhood
            {"11:29 11:31 10:00 11:29 12:00", 0}, // set forward over it

        };
        setTool("echo >>sent");
        for (const auto &row : table) {
            QTime now;
            StatusMail mail([] { return RestWeights{}; }, [&now] { return now; });
            QFile::remove("sent");
            for (const QString &time : QString(row.times).split(' ')) {
                now = QTime::fromString(time, "hh:mm");
                mail.pass();
            }
            QCOMPARE(readFile("sent").size(), row.mails);
        }
    }
};

QTEST_GUILESS_MAIN(TestMail)
#include "test_mail.moc"
