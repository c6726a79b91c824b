// Events: dictionary, active set, event.csv, and the announcement.

#include "events/EventHandler.h"
#include "events/EventTable.h"
#include "events/OperatorMessage.h"
#include "support/LogCapture.h"
#include "support/TestInstall.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <thread>

using Events = EventHandler;

class TestEvents : public QObject
{
    Q_OBJECT

    TestInstall m_install;
    int m_earlierRows = 0;

    static QString field(quint32 id, const char *key)
    {
        return QJsonDocument::fromJson(Events::activeEvents().value(id).toUtf8())[key].toVariant().toString();
    }
    /// Rows that came since init(), without their times.
    QStringList rows() const
    {
        QStringList rows = QString::fromUtf8(m_install.log("event.csv")).split("\r\n").mid(m_earlierRows);
        rows.removeLast();
        static const QRegularExpression time(R"(^\d\d\.\d\d\.\d\d \d\d:\d\d:\d\d\.\d{1,3},)");
        return rows.replaceInStrings(time, "");
    }

private slots:
    void initTestCase();
    void init()
    {
        for (int i = 0; i < eventTableSize; ++i)
            Events::clearEvent(eventTable[i].id);
        m_earlierRows = m_install.log("event.csv").count('\n');
    }
    void countsOccurrences();
    void comparesWithTheBand();
    void logsWhatIsNotActive();
    void announcesOnceASecond();
    void threadsLoseNoOccurrence();
};

void TestEvents::initTestCase()
{
    LogCapture log;
    Events::instance();
    const QStringList shown = log.text().split('\n').filter("\\t:");
    QCOMPARE(log.count("\n\n=====================show event list======================"), 1);
    QCOMPARE(shown.size(), 56);
    QCOMPARE(shown.first(), QString("\"00000000\\t:success\""));
    QVERIFY(std::is_sorted(shown.begin(), shown.end()));
    QCOMPARE(Events::eventMessage(0x2), QString("CAN 异常-%1 "));
    QCOMPARE(Events::eventMessage(0xDEADBEEF), QString("deadbeef"));
}

void TestEvents::countsOccurrences()
{
    const quint32 id = 0x33101;
    QCOMPARE(Events::eventDetail(id), QString("该事件未发生"));
    QCOMPARE(Events::setEvent(id, "-a"), quint8(1));
    const QString first = field(id, "STIME");
    QVERIFY(QDateTime::fromString(first, "yy/MM/dd hh:mm").isValid());
    QCOMPARE(Events::setEvent(id, "-b \"%1\""), quint8(2));
    QCOMPARE(field(id, "STIME"), first);
    QCOMPARE(field(id, "MSG"), QString("支撑墨管温度1-b \"%1\""));
    QCOMPARE(Events::eventDetail(id),
             "\n首次发生时间: " + first + "\n发生次数: 2\n事件: 支撑墨管温度1-b \"%1\"\n");
    QCOMPARE(rows(), QStringList{"\"00033101\",\"支撑墨管温度1-a\""});

    Events::clearEvent(id);
    QVERIFY(!Events::isEventActive(id));
    QCOMPARE(Events::eventCount(id), 0u);
    for (int count = 1; count <= 256; ++count)
        QCOMPARE(Events::setEvent(id, ""), quint8(count));
    QCOMPARE(Events::eventCount(id), 256u);
    QCOMPARE(rows().size(), 2);
    Events::clearEvent(id);

    QCOMPARE(Events::setEvent(0x33107, "x"), quint8(0)); // a channel that is not connected
    QVERIFY(Events::activeEvents().isEmpty());
    QCOMPARE(rows().size(), 2);
}

void TestEvents::comparesWithTheBand()
{
    const struct {
        int value;
        int setpoint;
        QString text; // none: clears
    } table[] = {{115, 100, ""},         {116, 100, " (当前值116>设定值100) "},
                 {85, 100, ""},          {84, 100, " (当前值84<设定值100) "},
                 {INT_MAX, INT_MAX, ""}, {INT_MIN, INT_MIN, ""}};
    for (const auto &row : table) {
        Events::setEvent(0x64102, "before");
        Events::checkEventRange(row.value, row.setpoint, 0x64102, 15);
        QCOMPARE(field(0x64102, "MSG"), row.text.isEmpty() ? QString() : "喷头黄铜温度1" + row.text);
    }
}

void TestEvents::logsWhatIsNotActive()
{
    Events::setEvent(0xffff06, "");
    Events::logEvent(0xffff06, "again");
    Events::logEvent(0, "a \"quoted\" text");
    Events::logEvent(0x33107, "unknown");
    QCOMPARE(rows(), (QStringList{"\"00ffff06\",\"喷头供墨异常\"", "\"00000000\",\"a \"quoted\" text\"",
                                  "\"00033107\",\"unknown\""}));
}

void TestEvents::announcesOnceASecond()
{
    QSignalSpy changed(Events::instance(), &Events::eventsChanged);
    QVERIFY(changed.wait(5000)); // init() has cleared
    Events::setEvent(0x1, "");
    Events::setEvent(0x2, "");
    QVERIFY(changed.wait(5000));
    QVERIFY(!changed.wait(1100)); // nothing new, nothing said
    QCOMPARE(changed.size(), 2);
    Events::setEvent(0x33107, "an unknown id alone");
    QVERIFY(changed.wait(5000));
}

void TestEvents::threadsLoseNoOccurrence()
{
    QCOMPARE(waitMessageForm(), 0); // no form, no wait
    setMessageWaiter([] { return 7; });
    std::atomic<int> answers{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            answers += waitMessageForm();
            for (int i = 0; i < 100; ++i) {
                Events::setEvent(0xffff01, "");
                Events::checkEventRange(i, 50, 0xffff02, 5);
                Events::logEvent(0xffff02, Events::eventDetail(0xffff01));
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    setMessageWaiter({});
    QCOMPARE(Events::eventCount(0xffff01), 400u);
    QCOMPARE(answers.load(), 28);
}

QTEST_GUILESS_MAIN(TestEvents)
#include "test_events.moc"
