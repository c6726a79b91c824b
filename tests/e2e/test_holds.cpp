// What a job holds for, and that it goes on from there to its end.

#include "JobHands.h"

#include <QtTest>

class TestHolds : public QObject
{
    Q_OBJECT
private slots:
    void pauseResumeAndPlatform();
    void levellerSlowInMidJob();
    void doorOpenInMidJob();
    void boardDiesAndComesBack();
};

void TestHolds::pauseResumeAndPlatform()
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

void TestHolds::levellerSlowInMidJob()
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

void TestHolds::doorOpenInMidJob()
{
    TestPrinter printer;
    QVERIFY(printer.makeModel("bar.tzl", {}, partHeightMm));
    QVERIFY2(printer.start() && printer.settle(), qPrintable(printer.error()));
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

void TestHolds::boardDiesAndComesBack()
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

QTEST_GUILESS_MAIN(TestHolds)
#include "test_holds.moc"
