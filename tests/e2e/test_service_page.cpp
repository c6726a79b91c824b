// The service page's routines, by real clicks on the simulated machine.

#include "JobHands.h"

#include <QtTest>

class TestServicePage : public QObject
{
    Q_OBJECT
private slots:
    void routinesKeepTheMachinesRules();
};

namespace
{
/// Presses a routine's button, answers its questions, and closes it once it has run enough.
void runRoutine(TestPrinter &printer, const QString &button, const QStringList &questions,
                const QString &running, const std::function<bool()> &enough, const QString &done)
{
    PrinterRig &rig = printer.rig();
    QVERIFY2(rig.click(button), qPrintable(rig.error()));
    for (const QString &question : questions) {
        QVERIFY2(!rig.waitMessage(question, waitLimitMs).isEmpty(), qPrintable(rig.error()));
        QVERIFY(rig.answer("Yes"));
    }
    QVERIFY2(!rig.waitMessage(running, waitLimitMs).isEmpty(), qPrintable(rig.error()));
    QVERIFY(rig.waitFor(enough, waitLimitMs));
    QVERIFY(rig.answer("close"));
    QVERIFY2(!rig.waitMessage(done, waitLimitMs).isEmpty(), qPrintable(rig.error()));
    QVERIFY(rig.answer("close"));
}
} // namespace

void TestServicePage::routinesKeepTheMachinesRules()
{
    TestPrinter printer;
    QVERIFY(printer.makeModel("bar.tzl"));
    QVERIFY2(printer.start() && printer.settle(), qPrintable(printer.error()));
    PrinterRig &rig = printer.rig();
    QVERIFY2(rig.bringFromUsb(printer.usb(), "bar.tzl"), qPrintable(rig.error()));
    QVERIFY(rig.click("pushButton_home")); // loads it: dots are as wide as its pictures
    QVERIFY(rig.click("pushButton_tool") && rig.click("pushButton_Debug"));
    const auto logged = [&](const QString &mark) {
        return [&printer, mark] { return printer.log().count(mark) >= 2; };
    };
    const QString station = "墨站是否正确放置", closing = "关闭弹窗后完成测试";
    const auto pulled = [&] {
        return rig.machine({"state"})["state"].toObject()["inkStackCoupled"].toBool();
    };
    runRoutine(printer, "pushButton_pullInkStation", {station}, closing, pulled, "测试完成\\([1-9]");
    runRoutine(printer, "pushButton_zTest", {"是否运动测试", "往复运动"}, closing, logged("z test count="),
               "测试完成");
    runRoutine(printer, "pushButton_presssInk", {"请确认喷头下方没有异物", "喷头下方是否放置容器"},
               "是否取消挤蜡", logged("press ink count="), "挤蜡完成");
    runRoutine(
        printer, "pushButton_printDot", {station}, closing, [&] { return passes(rig) >= 2; },
        "测试完成\\([1-9]");
    const QJsonObject report = printer.stop();
    QCOMPARE(TestPrinter::violations(report), QString());
}

QTEST_MAIN(TestServicePage)
#include "test_service_page.moc"
