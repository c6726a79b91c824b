// Whole jobs on scripted boards: how each fault and each word of the operator ends, and what stays behind.

#include "JobRig.h"

#include "engine/MachineServices.h"
#include "events/EventHandler.h"
#include "events/OperatorMessage.h"
#include "frame/Folders.h"
#include "frame/JsonConfig.h"

#include <QImage>
#include <QtTest>

namespace
{
constexpr int stopLimitMs = 5000;
constexpr int jobLimitMs = 60000;

class Services : public MachineServices
{
public:
    float encoderResolution() const override { return 25400; }
    bool checkHeadInkLevels() override { return low; }
    bool isTempReady() const override { return warm; }
    void setTemperatureMode(quint8 mode) override { lastMode = mode; }
    QString structureBottleSerial() const override { return "STR\"1"; }
    QString supportBottleSerial() const override { return "SUP2"; }

    std::atomic<bool> low{false};
    std::atomic<bool> warm{true};
    std::atomic<int> lastMode{-1};
};
} // namespace

class TestPrintJob : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void printsToTheEnd();
    void levellerSlowAtStart();
    void preparationFails_data();
    void preparationFails();
    void otherMachine();
    void stopsWhileWaiting_data();
    void stopsWhileWaiting();
    void doorsAndPause();
    void transferTimesOut();
    void goesBackAndForth();
    void record();

private:
    void start(ProbeJob &job);
    bool ended(ProbeJob &job, int limitMs = jobLimitMs) { return job.wait(QDeadlineTimer(limitMs)); }
    QVector<int> values(int command) const;
    QString standby() const;
    QString rows() const;

    JobRig m_rig;
    Services m_services;
};

void TestPrintJob::init()
{
    m_rig.reset();
    m_services.low = false;
    m_services.warm = true;
    m_services.lastMode = -1;
    setMachineServices(&m_services);
    QVERIFY(m_rig.loadModel());
}

void TestPrintJob::start(ProbeJob &job)
{
    job.setPrintStatus(PrintStatusPrinting);
    job.start();
}

/// What the motion board was told by one command.
QVector<int> TestPrintJob::values(int command) const
{
    QVector<int> found;
    for (const BoardRequest &request : m_rig.bridge.requests(2, command))
        found << request.value();
    return found;
}

/// Temperature mode, leveller, four fans and front door as the machine was left.
QString TestPrintJob::standby() const
{
    const auto fans = m_rig.bridge.requests(6, 0x46);
    const auto doors = m_rig.bridge.requests(5, 0x42);
    if (fans.isEmpty() || doors.isEmpty())
        return "untouched";
    return QStringLiteral("mode %1, roller %2, fans %3, door %4")
        .arg(m_services.lastMode)
        .arg(values(0x8F).last())
        .arg(QString(fans.last().data.mid(2, 4).toHex()))
        .arg(int(doors.last().data[4]));
}
static const QString standbyDone = "mode 2, roller 0, fans 00000000, door 0";

/// "status of the queue's row / history rows".
QString TestPrintJob::rows() const
{
    const auto queue = m_rig.query("select * from PrintQueue");
    return QStringLiteral("%1/%2")
        .arg(queue.isEmpty() ? -1 : queue[0].value("status").toInt())
        .arg(m_rig.query("select * from PrintHistory").size());
}

void TestPrintJob::printsToTheEnd()
{
    const float layersBefore = useInfoConfig()->getFloat("PrintingTotalLayer");
    QVERIFY(m_rig.slice(14, 14));
    ProbeJob job;
    start(job);
    QVERIFY(ended(job));
    QVERIFY(job.hasMessage("00000020|打印完成|1|200000"));
    QCOMPARE(standby(), standbyDone);
    QCOMPARE(rows(), QString("1/1"));
    QCOMPARE(job.ended.load(), 1);
    const QJsonObject state = job.printState();
    QCOMPARE(state["Tips"].toString(), QString("14-3 14"));
    QCOMPARE(state["PrintLayer"].toInt(), 14);
    QCOMPARE(state["LeftTime"].toDouble(), 0.0);
    QCOMPARE(useInfoConfig()->getFloat("PrintingTotalLayer"), layersBefore + 14);
    QVERIFY(useInfoConfig()->getValue("PrintTotalTime").toDouble() > 0);

    // The roller starts backwards; Y follows phase and shift; the base stands still until the bed drops at
    // the end.
    QCOMPARE(values(0x8F), (QVector<int>{-501, 0, 200, 501, 0}));
    QCOMPARE(values(0x60).mid(0, 4), (QVector<int>{11325, 11409, 11367, 11451}));
    QCOMPARE(values(0x65), (QVector<int>{10000, 1000, 16000}));
    QCOMPARE(m_rig.bridge.count(2, 0x83), 2 + 14 * 4);
    QCOMPARE(m_rig.hibCalls("hibWaitFor").size(), 14 * 4 * 3);
}

void TestPrintJob::levellerSlowAtStart()
{
    m_rig.bridge.setValue(2, 0x90, 99);
    ProbeJob job;
    start(job);
    QVERIFY(ended(job));
    QCOMPARE(job.messages(), QStringList("00000015|整平棍转速异常|3|200000"));
    QCOMPARE(job.ended.load(), 1);
    QCOMPARE(rows(), QString("0/0"));
    QCOMPARE(standby(), QString("untouched"));
}

void TestPrintJob::preparationFails_data()
{
    QTest::addColumn<int>("command"); // of the motion board: answers 1 in this byte, or not at all
    QTest::addColumn<int>("byte");
    QTest::addColumn<QString>("message");
    QTest::newRow("key missing") << 0 << 0 << "00000019|配置文件丢失|3|200000";
    QTest::newRow("ink stack not parked") << 0x72 << 2 << "00000011|墨栈光电状态异常|3|200000";
    QTest::newRow("X stuck") << 0x70 << 3 << "00020002|X 轴停止运动超时|3|200000";
    QTest::newRow("Y does not home") << 0x62 << -1 << "00020003|Y 轴停止运动超时|3|200000";
    QTest::newRow("Z does not home") << 0x63 << -1 << "00020004|Z 轴停止运动超时|3|200000";
}

/// The event is shown, the machine goes to standby, the record says failed.
void TestPrintJob::preparationFails()
{
    QFETCH(int, command);
    QFETCH(int, byte);
    QFETCH(QString, message);
    static std::atomic<bool> broken; // the boards keep their handlers until the next test
    broken = true;
    m_rig.bridge.setHandler(2, command, [byte](const BoardRequest &request) {
        QByteArray answer = request.data;
        if (byte < 0)
            return QByteArray();
        answer[byte] = broken;
        return answer;
    });
    m_rig.bridge.setHandler(6, 0x46, [](const BoardRequest &request) { // standby: it comes loose
        broken = false;
        return request.data;
    });
    if (!command)
        m_rig.install.writeConfig("Sys", {{"ZStartPos", 1000}, {"LevelSpeed", 500}});
    ProbeJob job;
    start(job);
    QVERIFY(ended(job));
    QCOMPARE(job.messages().last(), message);
    QCOMPARE(rows(), QString("2/1"));
    QCOMPARE(standby(), standbyDone);
    QCOMPARE(job.ended.load(), 1);
}

void TestPrintJob::otherMachine()
{
    // The model's machine and the operator's answer. A job that goes on ends at the missing keys.
    const QVector<std::pair<QByteArray, bool>> cases{
        {"Elsewhere9", false}, {"", false}, {"Elsewhere9", true}};
    for (const auto &[machine, answer] : cases) {
        init();
        QVERIFY(m_rig.loadModel("part.tzl", machine));
        m_rig.install.writeConfig("Sys", {{"LevelSpeed", 500}});
        setMessageWaiter([answer = answer] { return int(answer); });
        ProbeJob job;
        start(job);
        QVERIFY(ended(job));
        setMessageWaiter({});
        QVERIFY(job.hasMessage("00000013|此模型(" + machine +
                               ")不适用于当前机器(Pelora620),是否继续打印|3|14000"));
        QCOMPARE(job.ended.load(), answer ? 1 : 0);
        QCOMPARE(rows(), answer ? QString("2/1") : QString("0/0"));
    }
}

void TestPrintJob::stopsWhileWaiting_data()
{
    QTest::addColumn<int>("ready");
    QTest::addColumn<int>("total");
    QTest::addColumn<QString>("message");
    QTest::newRow("for heat") << 14 << 14 << "加热中";
    QTest::newRow("for the slicer's start") << 4 << 4 << "切片中请稍后 1.4..(";
    QTest::newRow("for a layer") << 5 << 480 << "切片中请稍后 5.480..(UsedMem:";
    QTest::newRow("for head ink") << 14 << 14 << "";
}

void TestPrintJob::stopsWhileWaiting()
{
    QFETCH(int, ready);
    QFETCH(int, total);
    QFETCH(QString, message);
    QVERIFY(m_rig.slice(ready, total));
    m_services.warm = message != "加热中";
    m_services.low = message.isEmpty();
    ProbeJob job;
    start(job);
    QTRY_VERIFY_WITH_TIMEOUT(
        message.isEmpty() ? EventHandler::isEventActive(0xffff06) : job.hasMessage(message), jobLimitMs);
    job.setPrintStatus(PrintStatusIdle);
    QVERIFY(ended(job, stopLimitMs));
    QVERIFY(job.hasMessage("00000016|停止打印"));
    QCOMPARE(rows(), QString("2/1"));
    QCOMPARE(standby(), standbyDone);
}

/// The door holds a job at its start and between layers, a slow leveller asks for a pause, a pause holds and
/// is over.
void TestPrintJob::doorsAndPause()
{
    const QString doorOpen = "00000010|请关闭墨箱门，否则无法供墨|";
    m_rig.bridge.setBytes(5, 0x33, {});
    QVERIFY(m_rig.slice(400, 400));
    ProbeJob job;
    start(job);
    QTRY_VERIFY_WITH_TIMEOUT(job.hasMessage(doorOpen + "3"), jobLimitMs);
    m_rig.bridge.setBytes(5, 0x33, {{2, 1}});
    QTRY_VERIFY_WITH_TIMEOUT(job.m_printLayer >= 2, jobLimitMs);
    m_rig.bridge.setBytes(5, 0x33, {});
    QTRY_VERIFY_WITH_TIMEOUT(job.hasMessage(doorOpen + "1"), jobLimitMs);
    m_rig.bridge.setBytes(5, 0x33, {{2, 1}});
    m_rig.bridge.setValue(2, 0x90, 7);
    QTRY_VERIFY_WITH_TIMEOUT(job.pauses > 0 && job.hasMessage("00000009|整平棍异常 当前转速7|3"), jobLimitMs);

    job.setPrintStatus(PrintStatusPaused);
    m_rig.bridge.setValue(2, 0x90, 500);
    int sweeps = -1;
    const auto held = [&] {
        const int before = std::exchange(sweeps, m_rig.bridge.count(2, 0x83));
        QTest::qWait(200);
        return before == sweeps;
    };
    QTRY_VERIFY_WITH_TIMEOUT(held(), jobLimitMs);
    QVERIFY(job.isRunning());
    job.setPrintStatus(PrintStatusPrinting);
    QTRY_VERIFY_WITH_TIMEOUT(m_rig.bridge.count(2, 0x83) > sweeps, jobLimitMs);
    job.setPrintStatus(PrintStatusIdle);
    QVERIFY(ended(job, stopLimitMs));
    QCOMPARE(rows(), QString("2/1"));
}

void TestPrintJob::transferTimesOut()
{
    QVERIFY(m_rig.slice(14, 14));
    m_rig.hibFail("hibWaitForImageTransferCompleteWto", 3);
    ProbeJob job;
    start(job);
    QVERIFY(ended(job));
    QVERIFY(job.messages().last().startsWith("00000017|打印超时xpos="));
    QCOMPARE(rows(), QString("2/1"));
    QCOMPARE(m_rig.hibCalls("hibWaitFor").size(), 3); // a pass is never repeated
}

/// Layer and height of each layer printed, and each height swept without printing, when a cleaning comes at a
/// layer.
void TestPrintJob::goesBackAndForth()
{
    using Step = std::pair<int, int>;
    constexpr int total = 98;
    constexpr int at = 93;
    QVERIFY(m_rig.slice(total, total));
    ProbeJob job;
    QVector<Step> steps; // the bridge's thread notes; read when the job has ended
    bool cleaned = false;
    Mutex mutex;
    m_rig.bridge.setHandler(2, 0x65, [&](const BoardRequest &request) {
        MutexLock lock(mutex);
        steps << Step(job.m_printLayer, request.value());
        if (job.m_printLayer == at && !std::exchange(cleaned, true))
            job.m_reprintCounter = 20;
        return request.data;
    });
    start(job);
    QVERIFY(ended(job));

    // The first 70 layers after the first stand at one height; a layer is 20 um.
    const auto height = [](int layer) { return 1000 + 20 * (layer - 71); };
    QVector<Step> expected;
    for (int layer = 72; layer <= at; ++layer)
        expected << Step(layer, height(layer));
    for (int layer = at - 1; layer >= at - 20; --layer)
        expected << Step(layer, height(layer));
    for (int layer = at - 20; layer <= total; ++layer)
        expected << Step(layer, height(layer + 3));
    MutexLock lock(mutex);
    QCOMPARE(steps.mid(2, expected.size()), expected);
    QCOMPARE(m_rig.bridge.count(2, 0x83), 2 + 4 * (at + 18 + total - (at - 21)) + 8);
}

/// Names with all that SQL, QString::arg and file systems could trip over; a model without a picture.
void TestPrintJob::record()
{
    const QString name = QString::fromUtf8("a \"ring\" %1 %5 件 '; drop table PrintQueue;--.tzl");
    m_rig.reset(); // the only model of the queue
    QVERIFY(m_rig.loadModel(name));
    ProbeJob job;
    job.resetPrintState(0);
    job.setState("StartTime", "2024-05-06 07:08");
    job.setState("PrintLayer", 31);
    for (const int code : {-1, 0}) {
        job.PrintRecord(code);
        job.setState("SumLayer", 32); // ended before its first layer: the model's own count
    }
    const QString both = "StartTime=2024-05-06 07:08|PrintLayer=31|SumLayer=32|ModelName=" + name;
    const auto queue = m_rig.query("select * from PrintQueue");
    const auto history = m_rig.query("select * from PrintHistory order by id");
    QCOMPARE(queue.size(), 1);
    QCOMPARE(history.size(), 2);
    QCOMPARE(history[0].value("SumLayer").toInt(), 480);
    for (const QString &pair : (both + "|status=1|ID=-1").split('|'))
        QCOMPARE(queue[0].value(pair.section('=', 0, 0)).toString(), pair.section('=', 1));
    for (const QString &pair : (both + "|SupWax=3|StrWax=12.5|StrWaxSn=STR\"1|SupWaxSn=SUP2|PrintMode=fine|"
                                       "Volume=1,2.5,3|modelMaterialName=wax")
                                   .split('|'))
        QCOMPARE(history[1].value(pair.section('=', 0, 0)).toString(), pair.section('=', 1));
    const QImage icon(historyIconPath(history[1].value("Icon").toString()) + ".jpg");
    QCOMPARE(icon.size(), QSize(256, 256));
    QCOMPARE(icon.pixelColor(128, 128), QColor(Qt::white));

    // A second failed job stands before the first; a model that is gone leaves a row without settings or
    // icon.
    for (int id = -1; id >= -2; --id) {
        const QString other = QString("part%1.tzl").arg(-id);
        QVERIFY(m_rig.loadModel(other));
        QFile::remove(modelPath(other));
        QFile::remove(modelIniPath(other));
        job.PrintRecord(0x19);
        const auto row = m_rig.query(QString("select * from PrintQueue where ModelName=\"%1\"").arg(other));
        QCOMPARE(row[0].value("ID").toInt(), id);
        const QString key =
            m_rig.query("select * from PrintHistory order by id desc")[0].value("Icon").toString();
        QVERIFY(!key.isEmpty() && !QFile::exists(historyIconPath(key) + ".jpg"));
    }
}

QTEST_MAIN(TestPrintJob)
#include "test_print_job.moc"
