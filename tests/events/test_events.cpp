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

#include <thread>

class TestEvents : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void showsItsTable();
    void countsOccurrences();
    void countsBeyondAByte();
    void unknownIdsAreSilent();
    void comparesWithTheBand_data();
    void comparesWithTheBand();
    void tellsDetails();
    void logsWhatIsNotActive();
    void announcesOnceASecond();
    void manyThreads();
    void waitsForTheForm();

private:
    static QJsonObject record(quint32 id)
    {
        return QJsonDocument::fromJson(EventHandler::activeEvents().value(id).toUtf8()).object();
    }
    /// Rows that came since init(), without their times.
    QStringList rows() const;

    TestInstall m_install;
    QStringList m_table;
    int m_earlierRows = 0;
};

void TestEvents::initTestCase()
{
    LogCapture log;
    EventHandler::instance();
    m_table = log.text().split('\n');
}

void TestEvents::init()
{
    for (int i = 0; i < eventTableSize; ++i)
        EventHandler::clearEvent(eventTable[i].id);
    m_earlierRows = m_install.log("event.csv").count('\n');
}

QStringList TestEvents::rows() const
{
    QStringList rows = QString::fromUtf8(m_install.log("event.csv")).split("\r\n").mid(m_earlierRows);
    static const QRegularExpression time(R"(^\d\d\.\d\d\.\d\d \d\d:\d\d:\d\d\.\d{1,3},)");
    for (QString &row : rows)
        row.remove(time);
    rows.removeLast();
    return rows;
}

void TestEvents::showsItsTable()
{
    QCOMPARE(eventTableSize, 56);
    QVERIFY(m_table.contains("=====================show event list======================"));
    const QStringList shown = m_table.filter("\\t:");
    QCOMPARE(shown.size(), 56);
    QCOMPARE(shown.first(), QString("\"00000000\\t:success\""));
    QVERIFY(std::is_sorted(shown.begin(), shown.end()));
    QCOMPARE(EventHandler::eventMessage(0x2), QString("CAN 异常-%1 "));
    QCOMPARE(EventHandler::eventMessage(0xffff07), QString("日常维护项目已过期,请打开维护页面查询!"));
    QCOMPARE(EventHandler::eventMessage(0x33107), QString("00033107"));
    QCOMPARE(messageTitle(0xDEADBEEF), QString("deadbeef"));
}

void TestEvents::countsOccurrences()
{
    const quint32 id = 0x33101;
    QCOMPARE(EventHandler::setEvent(id, "-a"), quint8(1));
    const QString first = record(id).value("STIME").toString();
    QVERIFY(QRegularExpression(R"(^\d\d/\d\d/\d\d \d\d:\d\d$)").match(first).hasMatch());
    QCOMPARE(EventHandler::setEvent(id, "-b \"%1\""), quint8(2));
    QCOMPARE(record(id).keys(), (QStringList{"CNT", "ETIME", "MSG", "STIME"}));
    QCOMPARE(record(id).value("STIME").toString(), first);
    QCOMPARE(record(id).value("MSG").toString(), QString("支撑墨管温度1-b \"%1\""));
    QCOMPARE(EventHandler::eventCount(id), 2u);
    QCOMPARE(rows(), QStringList{"\"00033101\",\"支撑墨管温度1-a\""});

    EventHandler::clearEvent(id);
    QVERIFY(!EventHandler::isEventActive(id));
    QCOMPARE(EventHandler::eventCount(id), 0u);
    QCOMPARE(EventHandler::setEvent(id, ""), quint8(1));
    QCOMPARE(rows().size(), 2);
    EventHandler::clearEvent(id);
    EventHandler::clearEvent(id);
    QCOMPARE(rows().size(), 2);
}

void TestEvents::countsBeyondAByte()
{
    int last = -1;
    for (int i = 0; i < 256; ++i)
        last = EventHandler::setEvent(0xffff04, "");
    QCOMPARE(last, 0);
    QCOMPARE(EventHandler::eventCount(0xffff04), 256u);
    QCOMPARE(rows().size(), 1);
}

void TestEvents::unknownIdsAreSilent()
{
    QCOMPARE(EventHandler::setEvent(0x33107, "x"), quint8(0));
    EventHandler::clearEvent(0x33107);
    QVERIFY(!EventHandler::isEventActive(0x33107));
    QVERIFY(EventHandler::activeEvents().isEmpty());
    QVERIFY(rows().isEmpty());
}

void TestEvents::comparesWithTheBand_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("setpoint");
    QTest::addColumn<QString>("text"); // none: clears
    QTest::newRow("upper edge") << 115 << 100 << "";
    QTest::newRow("above") << 116 << 100 << " (当前值116>设定值100) ";
    QTest::newRow("lower edge") << 85 << 100 << "";
    QTest::newRow("below") << 84 << 100 << " (当前值84<设定值100) ";
    QTest::newRow("below zero") << -16 << 0 << " (当前值-16<设定值0) ";
    QTest::newRow("no overflow up") << INT_MAX << INT_MAX << "";
    QTest::newRow("no overflow down") << INT_MIN << INT_MIN << "";
}

void TestEvents::comparesWithTheBand()
{
    QFETCH(int, value);
    QFETCH(int, setpoint);
    QFETCH(QString, text);
    EventHandler::setEvent(0x64102, "before");
    EventHandler::checkEventRange(value, setpoint, 0x64102, 15);
    QCOMPARE(EventHandler::isEventActive(0x64102), !text.isEmpty());
    if (!text.isEmpty())
        QCOMPARE(record(0x64102).value("MSG").toString(), "喷头黄铜温度1" + text);
}

void TestEvents::tellsDetails()
{
    QCOMPARE(EventHandler::eventDetail(0x10), QString("该事件未发生"));
    EventHandler::setEvent(0x10, "!");
    EventHandler::setEvent(0x10, "?");
    QCOMPARE(EventHandler::eventDetail(0x10),
             QString("\n首次发生时间: %1\n发生次数: 2\n事件: %2?\n")
                 .arg(record(0x10).value("STIME").toString(), EventHandler::eventMessage(0x10)));
}

void TestEvents::logsWhatIsNotActive()
{
    EventHandler::setEvent(0xffff06, "");
    EventHandler::logEvent(0xffff06, "again");
    EventHandler::logEvent(0, "a \"quoted\" text");
    EventHandler::logEvent(0x33107, "unknown");
    QCOMPARE(rows(), (QStringList{"\"00ffff06\",\"喷头供墨异常\"", "\"00000000\",\"a \"quoted\" text\"",
                                  "\"00033107\",\"unknown\""}));
}

void TestEvents::announcesOnceASecond()
{
    QSignalSpy changed(EventHandler::instance(), &EventHandler::eventsChanged);
    QVERIFY(changed.wait(5000)); // init() has cleared
    changed.clear();
    EventHandler::setEvent(0x1, "");
    EventHandler::setEvent(0x2, "");
    EventHandler::setEvent(0x33107, "");
    QVERIFY(changed.wait(5000));
    QCOMPARE(changed.size(), 1);
    QVERIFY(!changed.wait(1500)); // nothing new, nothing said
    EventHandler::setEvent(0x33107, "an unknown id alone");
    QVERIFY(changed.wait(5000));
    EventHandler::clearEvent(0x33107);
    QVERIFY(changed.wait(5000));
}

void TestEvents::manyThreads()
{
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([] {
            for (int i = 0; i < 100; ++i) {
                EventHandler::setEvent(0xffff01, "");
                EventHandler::checkEventRange(i, 50, 0xffff02, 5);
                EventHandler::logEvent(0xffff02, "");
                EventHandler::activeEvents();
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(EventHandler::eventCount(0xffff01), 400u);
}

void TestEvents::waitsForTheForm()
{
    QCOMPARE(waitMessageForm(), 0); // no form, no wait
    setMessageWaiter([] { return 7; });
    int answer = 0;
    std::thread([&] { answer = waitMessageForm(); }).join();
    setMessageWaiter({});
    QCOMPARE(answer, 7);
}

QTEST_GUILESS_MAIN(TestEvents)
#include "test_events.moc"
