// What goes wrong in a job, and how each ends: message, records, standby, and that the operator can always stop.

#include "TestPrinter.h"

#include <QElapsedTimer>
#include <QtTest>
#include <functional>

namespace {
constexpr int stopLimitMs = 5000;
constexpr int waitLimitMs = 180000;
constexpr int axisLimitMs = 180000; // ten thousand looks at an axis, each a message
constexpr double partHeightMm = 2.5; // enough layers for a hand on the screen
using Steps = std::function<bool(PrinterRig &)>;

int passes(PrinterRig &rig)
{
    return rig.machine({"state"})["state"].toObject()["passes"].toInt();
}

/// The page refreshes every 5 s; the machine knows at once.
bool atLayer(PrinterRig &rig, int layer)
{
    return rig.waitFor([&] { return passes(rig) >= 4 * (layer - 1); }, waitLimitMs);
}

bool machine(PrinterRig &rig, const QStringList &command)
{
    return rig.machine(command)["ok"].toBool();
}

/// A waiting job's message comes back at each look, so the operator closes it and is quick.
bool pressStop(PrinterRig &rig)
{
    const auto asked = [&] {
        const QString shown = rig.message()["text"].toString();
        if (shown.contains("是否中止打印"))
            return true;
        if (!shown.isEmpty())
            rig.answer("close");
        rig.click("pushButton_printStop");
        return false;
    };
    return rig.waitFor(asked, waitLimitMs) && rig.answer("Yes");
}

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
    void pauseResumeAndPlatform();
    void levellerSlowAtStart();
    void levellerSlowInMidJob();
    void doorOpenInMidJob();
    void boardDiesAndComesBack();
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
    const auto history = printer.query("select * from PrintHistory");
    QCOMPARE(history.size(), 1);
    QVERIFY(history[0]["PrintLayer"].toInt() < history[0]["SumLayer"].toInt());
    const QJsonObject standby = printer.rig().machine({"state"})["state"].toObject();
    QCOMPARE(standby["leveller"].toObject()["set"].toInt(), 0);
}

void TestFaults::pauseResumeAndPlatform()
{
    TestPrinter printer;
    QVERIFY(printer.makeModel("bar.tzl", {}, partHeightMm));
    QVERIFY2(printer.start(), qPrintable(printer.error()));
    QVERIFY2(printer.print("bar.tzl"), qPrintable(printer.error()));
    PrinterRig &rig = printer.rig();
    QVERIFY(atLayer(rig, 3));
    QVERIFY(rig.click("pushButton_printImage"));
    QVERIFY(machine(rig, {"platform", "take"}));
    QVERIFY(rig.click("pushButton_printImage"));
    QVERIFY2(!rig.waitMessage("平台未放好", waitLimitMs).isEmpty(), qPrintable(rig.error()));
    QVERIFY(rig.answer("close"));
    QVERIFY(machine(rig, {"platform", "put"}));
    QVERIFY(rig.click("pushButton_printImage"));
    QVERIFY(rig.waitPrintEnd(waitLimitMs).contains("打印完成"));
    const QJsonObject report = printer.stop();
    QCOMPARE(report["passes"].toInt() % 4, 0);
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

void TestFaults::levellerSlowInMidJob()
{
    TestPrinter printer;
    QVERIFY(printer.makeModel("bar.tzl", {}, partHeightMm));
    QVERIFY2(printer.start(), qPrintable(printer.error()));
    QVERIFY2(printer.print("bar.tzl"), qPrintable(printer.error()));
    PrinterRig &rig = printer.rig();
    QVERIFY(atLayer(rig, 2) && machine(rig, {"leveller", "slow"}));
    QVERIFY2(!rig.waitMessage("整平棍异常", waitLimitMs).isEmpty(), qPrintable(rig.error()));
    QVERIFY(machine(rig, {"leveller", "normal"}) && rig.answer("close"));
    QVERIFY(rig.click("pushButton_printImage"));
    QVERIFY(rig.waitPrintEnd(waitLimitMs).contains("打印完成"));
}

void TestFaults::doorOpenInMidJob()
{
    TestPrinter printer;
    QVERIFY(printer.makeModel("bar.tzl", {}, partHeightMm));
    QVERIFY2(printer.start(), qPrintable(printer.error()));
    QVERIFY(machine(printer.rig(), {"door", "inkbox", "open"}));
    QVERIFY2(printer.print("bar.tzl"), qPrintable(printer.error()));
    PrinterRig &rig = printer.rig();
    QVERIFY2(!rig.waitMessage("请关闭墨箱门", waitLimitMs).isEmpty(), qPrintable(rig.error()));
    QVERIFY(machine(rig, {"door", "inkbox", "close"}));
    QVERIFY(atLayer(rig, 2) && machine(rig, {"door", "inkbox", "open"}));
    QVERIFY2(!rig.waitMessage("请关闭墨箱门", waitLimitMs).isEmpty(), qPrintable(rig.error()));
    QVERIFY(machine(rig, {"door", "inkbox", "close"}));
    QVERIFY(rig.waitFor([&] { return rig.message().isEmpty() || rig.answer("close"); }, waitLimitMs));
    QVERIFY(rig.waitPrintEnd(waitLimitMs).contains("打印完成"));
}

void TestFaults::boardDiesAndComesBack()
{
    TestPrinter printer;
    QVERIFY(printer.makeModel("bar.tzl", {}, partHeightMm));
    QVERIFY2(printer.start(), qPrintable(printer.error()));
    QVERIFY2(printer.print("bar.tzl"), qPrintable(printer.error()));
    PrinterRig &rig = printer.rig();
    QVERIFY(atLayer(rig, 2) && machine(rig, {"board", "6", "die"}));
    // Each message to it now holds the bus for two real seconds, and the job still goes on.
    const int before = passes(rig);
    QVERIFY(rig.waitFor([&] { return passes(rig) > before; }, waitLimitMs));
    QVERIFY(machine(rig, {"board", "6", "revive"}));
    QVERIFY(rig.waitPrintEnd(waitLimitMs).contains("打印完成"));
    QCOMPARE(TestPrinter::violations(printer.stop()), QString());
    QCOMPARE(printer.differingDots("bar.tzl"), 0);
}

QTEST_GUILESS_MAIN(TestFaults)
#include "test_faults.moc"
