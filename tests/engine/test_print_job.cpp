// Jobs on scripted boards: what the boards are told, how a job ends before its first layer, what stays
// behind.

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
    void preparationFails();
    void otherMachine();
    void stopsWhileWaiting();
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
    QCOMPARE(job.printState()["Tips"].toString(), QString("14-3 14"));
    QCOMPARE(useInfoConfig()->getFloat("PrintingTotalLayer"), layersBefore + 14);

    // The roller starts backwards; Y follows phase and shift; the base stands still until the bed drops at
    // the end.
    QCOMPARE(values(0x8F), (QVector<int>{-501, 0, 200, 501, 0}));
    QCOMPARE(values(0x60).mid(0, 5), (QVector<int>{8000, 11325, 11409, 11367, 11451})); // first to the cleaning
    const QVector<int> z = values(0x65);
    QCOMPARE(z.mid(0, 2), (QVector<int>{10000, 145000}));
    QCOMPARE(z.mid(z.size() - 2), (QVector<int>{1000, 16000}));
    QCOMPARE(m_rig.hibCalls("hibWaitFor").size(), 14 * 4 * 3);
}

/// The event is shown, the machine goes to standby, the record says failed.
void TestPrintJob::preparationFails()
{
    const QString messages[] = {"00000019|配置文件丢失|3|200000", "00000011|墨栈光电状态异常|3|200000",
                                "00020003|Y 轴停止运动超时|3|200000"};
    for (int fault = 0; fault < 3; ++fault) {
        init();
        if (fault == 0)
            m_rig.install.writeConfig("Sys", {{"ZStartPos", 1000}, {"LevelSpeed", 500}});
        else if (fault == 1)
            m_rig.bridge.setBytes(2, 0x72, {{2, 1}}); // the ink stack is not parked
        else
            m_rig.bridge.fail(FakeBridge::Silent, 2, 0x62, 1); // Y does not home
        ProbeJob job;
        start(job);
        QVERIFY(ended(job));
        QCOMPARE(job.messages().last(), messages[fault]);
        QCOMPARE(rows(), QString("2/1"));
        QCOMPARE(standby(), standbyDone);
        QCOMPARE(job.ended.load(), 1);
    }
}

void TestPrintJob::otherMachine()
{
    // The model's machine and the operator's answer. A job that goes on ends at the missing keys.
    const QVector<std::pair<QByteArray, bool>> cases{{"", false}, {"Elsewhere9", true}};
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

/// For heat, and for ink in the heads.
void TestPrintJob::stopsWhileWaiting()
{
    for (const bool warm : {false, true}) {
        init();
        QVERIFY(m_rig.slice(14, 14));
        m_services.warm = warm;
        m_services.low = warm;
        ProbeJob job;
        start(job);
        QTRY_VERIFY_WITH_TIMEOUT(warm ? EventHandler::isEventActive(0xffff06) : job.hasMessage("加热中"),
                                 jobLimitMs);
        job.setPrintStatus(PrintStatusIdle);
        QVERIFY(ended(job, stopLimitMs));
        QVERIFY(job.hasMessage("00000016|停止打印"));
        QCOMPARE(rows(), QString("2/1"));
        QCOMPARE(standby(), standbyDone);
    }
}

/// A name with all that SQL and QString::arg could trip over. A second failed job stands before the first; a
/// model that is gone leaves a row without settings or icon.
void TestPrintJob::record()
{
    const QString name = QString::fromUtf8("a \"ring\" %1 %5 件 '; drop table PrintQueue;--.tzl");
    m_rig.reset(); // the only model of the queue
    QVERIFY(m_rig.loadModel(name));
    ProbeJob job;
    job.resetPrintState(0);
    job.setState("PrintLayer", 31); // ended before its first layer: the model's own count
    job.PrintRecord(0);
    const auto row = m_rig.query("select * from PrintHistory").at(0);
    const QString expected =
        "ModelName=" + name +
        "|PrintLayer=31|SumLayer=480|SupWax=3|StrWax=12.5|"
        "StrWaxSn=STR\"1|SupWaxSn=SUP2|PrintMode=fine|Volume=1,2.5,3|modelMaterialName=wax";
    for (const QString &pair : expected.split('|'))
        QCOMPARE(row.value(pair.section('=', 0, 0)).toString(), pair.section('=', 1));
    QCOMPARE(QImage(historyIconPath(row.value("Icon").toString()) + ".jpg").size(), QSize(256, 256));

    for (int id = -1; id >= -2; --id) {
        const QString other = QString("part%1.tzl").arg(-id);
        QVERIFY(m_rig.loadModel(other));
        QFile::remove(modelPath(other));
        QFile::remove(modelIniPath(other));
        job.PrintRecord(0x19);
        QCOMPARE(m_rig.query("select ID from PrintQueue where status=2 order by ID")[0].value(0).toInt(), id);
        const auto icon =
            m_rig.query("select Icon from PrintHistory order by id desc")[0].value(0).toString();
        QVERIFY(!icon.isEmpty() && !QFile::exists(historyIconPath(icon) + ".jpg"));
    }
}

QTEST_MAIN(TestPrintJob)
#include "test_print_job.moc"
