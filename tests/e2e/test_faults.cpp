// What goes wrong in a job, and how each ends: message, records, standby, and that the operator can always stop.

#include "JobHands.h"

#include <QElapsedTimer>
#include <QtTest>
#include <functional>

namespace {
constexpr int stopLimitMs = 5000;
constexpr int axisLimitMs = 180000; // ten thousand looks at an axis, each a message
using Steps = std::function<bool(PrinterRig &)>;

/// Presses stop; true when the job's last message came within the limit.
bool stopsInTime(PrinterRig &rig)
{
    QElapsedTimer clock;
    if (!pressStop(rig))
        return false;
    clock.start();
    return !rig.waitMessage("停止打印", stopLimitMs).isEmpty() && clock.elapsed() <= stopLimitMs;
}
} // namespace
Q_DECLARE_METATYPE(Steps)

class TestFaults : public QObject
{
    Q_OBJECT
private slots:
    void endsAs_data();
    void endsAs();
    void levellerSlowAtStart();
};

void TestFaults::endsAs_data()
{
    QTest::addColumn<QStringList>("environment");
    QTest::addColumn<Steps>("steps");
    QTest::addColumn<QString>("message");
    const auto at3 = [](const QStringList &fault) -> Steps {
        return [fault](PrinterRig &rig) { return atLayer(rig, 3) && machine(rig, fault); };
    };
    // Mended once it was told: the end of a job waits for the axes, too, as long as for the move that failed.
    const auto stuck = [](const QString &axis, const QString &message) -> Steps {
        return [axis, message](PrinterRig &rig) {
            return atLayer(rig, 3) && machine(rig, {"stick", axis, "on"}) &&
                   !rig.waitMessage(message, axisLimitMs).isEmpty() && machine(rig, {"stick", axis, "off"});
        };
    };
    const auto stopAfter = [](const QString &waiting) -> Steps {
        return [waiting](PrinterRig &rig) {
            return !rig.waitMessage(waiting, waitLimitMs).isEmpty() && stopsInTime(rig);
        };
    };
    const QStringList none;
    QTest::newRow("stop in mid-job")
        << none << Steps([](PrinterRig &rig) { return atLayer(rig, 2) && stopsInTime(rig); }) << "停止打印";
    QTest::newRow("stop while paused") << none << Steps([](PrinterRig &rig) {
        return atLayer(rig, 2) && rig.click("pushButton_printImage") && stopsInTime(rig);
    }) << "停止打印";
    QTest::newRow("X stuck") << none << stuck("x", "X 轴停止运动超时|打印超时") << "X 轴停止运动超时|打印超时";
    QTest::newRow("Y stuck") << none << stuck("y", "Y 轴停止运动超时") << "Y 轴停止运动超时";
    QTest::newRow("Z stuck") << none << stuck("z", "Z 轴停止运动超时") << "Z 轴停止运动超时";
    QTest::newRow("transfer does not complete") << none << at3({"hold-transfer", "on"}) << "打印超时";
    const auto atOnce = [](const QStringList &fault) -> Steps {
        return [fault](PrinterRig &rig) { return machine(rig, fault); };
    };
    QTest::newRow("ink stack stays parked") << none << atOnce({"stack", "parked"}) << "墨栈光电状态异常";
    QTest::newRow("ink stack stays on the carriage") << none << atOnce({"stack", "carriage"}) << "墨栈光电状态异常";
    QTest::newRow("no vacuum") << none << Steps([](PrinterRig &rig) {
        return machine(rig, {"vacuum", "2", "structure", "leak"}) &&
               !rig.waitMessage("气压恢复中", waitLimitMs).isEmpty() && pressStop(rig);
    }) << "停止打印";
    QTest::newRow("slicer dies") << QStringList{"PELORA_SLICER_FAULT=die:9"} << stopAfter("切片中") << "停止打印";
    QTest::newRow("slicer stalls") << QStringList{"PELORA_SLICER_FAULT=stall:9"} << stopAfter("切片中")
                                   << "停止打印";
}

void TestFaults::endsAs()
{
    QFETCH(QStringList, environment);
    QFETCH(Steps, steps);
    QFETCH(QString, message);
    TestPrinter printer;
    QVERIFY(printer.makeModel("bar.tzl", {}, partHeightMm));
    QVERIFY2(printer.start(environment), qPrintable(printer.error()));
    QVERIFY2(printer.print("bar.tzl"), qPrintable(printer.error()));
    QVERIFY2(steps(printer.rig()), qPrintable(printer.error()));
    const QString end = printer.rig().waitPrintEnd(waitLimitMs);
    QVERIFY2(QRegularExpression(message).match(end).hasMatch(), qPrintable(end + printer.error()));
    const auto failed = [&] {
        const auto rows = printer.query("select status from PrintQueue");
        return rows.size() == 1 && rows[0]["status"].toInt() == 2;
    };
    QVERIFY(printer.rig().waitFor(failed, waitLimitMs));
    QList<QVariantMap> history; // written after the queue's row
    const auto recorded = [&] {
        history = printer.query("select * from PrintHistory");
        return history.size() == 1;
    };
    QVERIFY(printer.rig().waitFor(recorded, waitLimitMs));
    QVERIFY(history[0]["PrintLayer"].toInt() < history[0]["SumLayer"].toInt());
    const QJsonObject standby = printer.rig().machine({"state"})["state"].toObject();
    QCOMPARE(standby["leveller"].toObject()["set"].toInt(), 0);
}

void TestFaults::levellerSlowAtStart()
{
    TestPrinter printer;
    QVERIFY(printer.makeModel("bar.tzl", {}, partHeightMm));
    QVERIFY2(printer.start(), qPrintable(printer.error()));
    QVERIFY(machine(printer.rig(), {"leveller", "slow"}));
    QVERIFY2(printer.print("bar.tzl"), qPrintable(printer.error()));
    QVERIFY(printer.rig().waitPrintEnd(waitLimitMs).contains("整平棍转速异常"));
    QCOMPARE(printer.query("select * from PrintHistory").size(), 0);
    QCOMPARE(printer.query("select * from PrintQueue where status=0").size(), 1);
}

QTEST_GUILESS_MAIN(TestFaults)
#include "test_faults.moc"
