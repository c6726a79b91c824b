// Where the physics could lie: motion, where drops fall, and what counts as a violation.

#include "ManualClock.h"

#include <QJsonDocument>
#include <QtTest>
#include <cmath>
#include <functional>

using Action = std::function<void(TestMachine &)>;
Q_DECLARE_METATYPE(Action)

class TestMachinePhysics : public QObject
{
    Q_OBJECT
private slots:
    void axisKeepsItsTrapezoid_data();
    void axisKeepsItsTrapezoid();
    void stuckAxisEndsItsMoveLater();
    void dropsFallOnTheirPlaces_data();
    void dropsFallOnTheirPlaces();
    void wrongPlacesShow_data();
    void wrongPlacesShow();
    void pageIsCompleteWithItsLastColumn();
    void raisesViolations_data();
    void raisesViolations();
    void allowsWhatTheProcessDoes();
    void encoderCountsFromItsPreset();
};

void TestMachinePhysics::axisKeepsItsTrapezoid_data()
{
    QTest::addColumn<double>("to");
    QTest::addColumn<double>("seconds");
    QTest::newRow("long, forward") << 550000.0 << 530000.0 / 600e3 + 0.1;
    QTest::newRow("long, back") << -510000.0 << 530000.0 / 600e3 + 0.1;
    QTest::newRow("never at full speed") << 26000.0 << 2 * std::sqrt(6000.0 / 6e6);
    QTest::newRow("nowhere") << 20000.0 << 0.0;
}

void TestMachinePhysics::axisKeepsItsTrapezoid()
{
    QFETCH(double, to);
    QFETCH(double, seconds);
    const double from = 20000, start = 7;
    Axis axis(from, 600e3, 6e6);
    QVERIFY(qAbs(axis.moveTo(to, start) - seconds) < 1e-6);
    QCOMPARE(axis.position(start), from);
    QCOMPARE(axis.position(start + seconds + 1), to);
    QCOMPARE(axis.moving(start + seconds * 0.99), seconds > 0);
    QVERIFY(!axis.moving(start + seconds + 1e-6));
    // Half way at half time; and the time of a place is the inverse of the place at a time.
    QVERIFY(qAbs(axis.position(start + seconds / 2) - (from + to) / 2) < 1e-3);
    for (double share : {0.02, 0.05, 0.3, 0.5, 0.9, 0.98}) {
        const double time = start + share * seconds;
        QVERIFY(qAbs(axis.timeAt(axis.position(time)) - time) < 1e-6);
    }
    QVERIFY(std::isinf(axis.timeAt(to + (to - from) + 1)));
}

void TestMachinePhysics::stuckAxisEndsItsMoveLater()
{
    Axis axis(0, 1000, 1e6);
    axis.moveTo(10000, 0);
    axis.setStuck(true, 5);
    const double held = axis.position(5);
    QCOMPARE(axis.position(100), held);
    QVERIFY(axis.moving(100));
    QVERIFY(std::isinf(axis.timeAt(9000)));
    axis.setStuck(false, 100);
    QVERIFY(qAbs(axis.position(100) - held) < 1e-3);
    QVERIFY(!axis.moving(106) && axis.position(106) == 10000);
    axis.setStuck(true, 200);
    QVERIFY(!axis.moving(201));
    axis.moveTo(0, 202);
    QVERIFY(axis.moving(300) && axis.position(300) == 10000);
}

void TestMachinePhysics::dropsFallOnTheirPlaces_data()
{
    QTest::addColumn<bool>("forward");
    QTest::addColumn<int>("width");
    QTest::newRow("forward, small") << true << 256;
    QTest::newRow("reverse, small") << false << 256;
    QTest::newRow("forward, whole bed") << true << 7008;
    QTest::newRow("reverse, whole bed") << false << 7008;
}

/// One dot for each head. A reverse picture comes mirrored, so its column 0 is the layer's last.
void TestMachinePhysics::dropsFallOnTheirPlaces()
{
    QFETCH(bool, forward);
    QFETCH(int, width);
    TestMachine test;
    test.makeReady();
    if (!forward) {
        test.machine.sweepX();
        test.pass(10);
    }
    test.placePage(forward, width);
    const std::vector<std::pair<int, int>> dots = {
        {0, 0}, {439, 5}, {440, 100}, {879, width - 1}, {1319, 17}};
    test.machine.arm(TestMachine::picture(forward, width, dots));
    test.machine.sweepX();
    test.pass(10);
    QVERIFY2(!test.machine.violations().count(), QJsonDocument(test.machine.violations().list()).toJson());
    QCOMPARE(test.machine.recorder().passes().size(), size_t(1));
    const PassRecord &pass = test.machine.recorder().passes()[0];
    size_t seen = 0;
    pass.structure.forEachDot([&](int row, int column) {
        QCOMPARE(row, dots[seen].first);
        QCOMPARE(column, dots[seen].second);
        const int head = pass.headOfRow(row);
        QCOMPARE(head, row / 440);
        const int layerColumn = forward ? column : width - 1 - column;
        const double columnOff =
            (pass.dotX(head, column) - geometry::bedOriginX) / (25400.0 / 600) - layerColumn;
        const double rowOff = (pass.dotY(head, row) - geometry::bedOriginY) / 168.8 - row;
        QVERIFY2(qAbs(columnOff) < 0.01, qPrintable(QString::number(columnOff)));
        QVERIFY(qAbs(rowOff) < 0.01);
        ++seen;
    });
    QCOMPARE(seen, dots.size());
    QCOMPARE(test.machine.recorder().dots(0, 0), 2ULL);
    QCOMPARE(test.machine.recorder().dots(2, 0), 1ULL);
}

void TestMachinePhysics::wrongPlacesShow_data()
{
    QTest::addColumn<Action>("mistake");
    QTest::addColumn<double>("columns");
    QTest::addColumn<double>("rows");
    QTest::newRow("offset of head 2")
        << Action([](TestMachine &t) { t.machine.headArray().head(2).pageOffset += 127; }) << 3.0 << 0.0;
    QTest::newRow("start") << Action([](TestMachine &t) { t.machine.headArray().head(2).pageStart -= 254; })
                           << -6.0 << 0.0;
    QTest::newRow("slower than the offsets are for")
        << Action([](TestMachine &t) { t.machine.setXSpeed(300); }) << -60 / (25400.0 / 600) << 0.0;
    QTest::newRow("head 2 entered where the test print has it") << Action([](TestMachine &t) {
        t.machine.headArray().head(2).firstRow = 438;
        t.machine.headArray().head(2).overlap = 1;
    }) << 0.0 << 1.0;
    QTest::newRow("Y one pitch off") << Action([](TestMachine &t) {
        t.machine.moveY(12169);
        t.pass(1);
    }) << 0.0 << 169 / 168.8;
    QTest::newRow("encoder divider of the other encoder")
        << Action([](TestMachine &t) { t.machine.headArray().clock.divider = 6350 * 1.01; }) << 1.0 << 0.0;
}

void TestMachinePhysics::wrongPlacesShow()
{
    QFETCH(Action, mistake);
    QFETCH(double, columns);
    QFETCH(double, rows);
    TestMachine test;
    test.makeReady();
    test.placePage(true, 256);
    mistake(test);
    test.machine.arm(TestMachine::picture(true, 256, {{500, 100}}));
    test.machine.sweepX();
    test.pass(10);
    const PassRecord &pass = test.machine.recorder().passes().at(0);
    const double column = (pass.dotX(1, 100) - geometry::bedOriginX) / (25400.0 / 600) - 100;
    const double row = (pass.dotY(1, 500) - geometry::bedOriginY) / 168.8 - 500;
    QVERIFY2(qAbs(column - columns) < 0.01 && qAbs(row - rows) < 0.01,
             qPrintable(QString("%1 columns, %2 rows off").arg(column).arg(row)));
}

void TestMachinePhysics::pageIsCompleteWithItsLastColumn()
{
    TestMachine test;
    test.makeReady();
    test.placePage(true, 256);
    test.machine.arm(TestMachine::picture(true, 256, {{0, 255}}));
    QVERIFY(!test.machine.transferComplete());
    test.machine.sweepX();
    // Head 1 fires last: 256 columns from 149880 on, 0.05 s behind a start without acceleration.
    const double last = 149879 + 255 * 25400.0 / 600;
    const double expected = test.clock.seconds + (last - geometry::xHome) / 600e3 + 0.05;
    QVERIFY(qAbs(test.machine.completionTime() - expected) < 1e-6);
    test.clock.seconds = expected - 1e-3;
    QVERIFY(!test.machine.transferComplete());
    test.clock.seconds = expected + 1e-3;
    QVERIFY(test.machine.transferComplete() && test.machine.xMoving());
    test.machine.holdTransfer = true;
    QVERIFY(!test.machine.transferComplete());
}

void TestMachinePhysics::raisesViolations_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<Action>("action");
    const auto row = [](const char *name, Action action) { QTest::newRow(name) << QString(name) << action; };
    row("y-during-sweep", [](TestMachine &t) {
        t.machine.sweepX();
        t.pass(0.8);
        t.machine.moveY(12100);
    });
    row("sweep-without-image", [](TestMachine &t) {
        t.placePage(true, 256);
        t.machine.sweepX();
    });
    row("direction", [](TestMachine &t) {
        t.placePage(false, 256);
        t.machine.arm(TestMachine::picture(false, 256, {{0, 0}}));
        t.machine.sweepX();
    });
    row("no-page", [](TestMachine &t) {
        t.machine.arm(TestMachine::picture(true, 256, {{0, 0}}));
        t.machine.sweepX();
    });
    row("page-width", [](TestMachine &t) {
        t.placePage(true, 288);
        t.machine.arm(TestMachine::picture(true, 256, {{0, 0}}));
        t.machine.sweepX();
    });
    row("page-outside-cruise", [](TestMachine &t) {
        t.placePage(true, 256);
        for (int head = 1; head <= 3; ++head)
            t.machine.headArray().head(head).pageStart = 20000;
        t.machine.arm(TestMachine::picture(true, 256, {{0, 0}}));
        t.machine.sweepX();
    });
    row("armed-twice", [](TestMachine &t) {
        t.placePage(true, 256);
        t.machine.arm(TestMachine::picture(true, 256, {{0, 0}}));
        t.machine.sweepX();
        t.machine.arm(TestMachine::picture(true, 256, {{0, 0}}));
    });
    row("page-interrupted", [](TestMachine &t) {
        t.placePage(true, 256);
        t.machine.arm(TestMachine::picture(true, 256, {{0, 0}}));
        t.machine.sweepX();
        t.pass(0.1);
        t.machine.homeX();
    });
    row("dpi", [](TestMachine &t) {
        Picture picture = TestMachine::picture(true, 256, {{0, 0}});
        picture.dpi = 300;
        t.machine.arm(picture);
    });
    row("cold-head", [](TestMachine &t) {
        t.machine.climate().heater(2, 1).setTarget(130, t.clock.seconds);
        t.placePage(true, 256);
        t.machine.arm(TestMachine::picture(true, 256, {{0, 0}}));
        t.machine.sweepX();
    });
    row("no-platform", [](TestMachine &t) {
        t.machine.platformSeated = false;
        t.placePage(true, 256);
        t.machine.arm(TestMachine::picture(true, 256, {{0, 0}}));
        t.machine.sweepX();
    });
    row("sweep-while-moving", [](TestMachine &t) {
        t.machine.sweepX();
        t.pass(0.5);
        t.machine.sweepX();
    });
    const Action printed = [](TestMachine &t) {
        t.placePage(true, 256);
        t.machine.arm(TestMachine::picture(true, 256, {{0, 0}}));
        t.machine.sweepX();
        t.pass(10);
    };
    row("part-into-heads", [printed](TestMachine &t) {
        printed(t);
        t.machine.homeZ();
    });
    row("leveller-stands", [printed](TestMachine &t) {
        printed(t);
        t.machine.moveZ(1950);
        t.machine.setLevellerSpeed(0);
        t.pass(10);
        t.machine.sweepX();
    });
    row("z-during-page", [](TestMachine &t) {
        t.placePage(true, 256);
        t.machine.arm(TestMachine::picture(true, 256, {{0, 0}}));
        t.machine.sweepX();
        t.pass(0.1);
        t.machine.moveZ(2100);
    });
    row("axis-limit", [](TestMachine &t) { t.machine.moveZ(150100); });
    row("speed", [](TestMachine &t) { t.machine.setXSpeed(0); });
    row("not-homed", [](TestMachine &t) {
        t.machine.homeY();
        t.pass(1);
        t.machine.moveY(12000); // the counter was not zeroed
    });
}

void TestMachinePhysics::raisesViolations()
{
    QFETCH(QString, name);
    QFETCH(Action, action);
    TestMachine test;
    test.makeReady();
    QCOMPARE(test.machine.violations().count(), 0);
    action(test);
    QVERIFY2(test.machine.violations().contains(name),
             QJsonDocument(test.machine.violations().list()).toJson());
    QCOMPARE(test.machine.violations().count(), name == "no-page"               ? 4
                                                : name == "page-width"          ? 3
                                                : name == "page-outside-cruise" ? 3
                                                                                : 1);
}

/// Levelling sweeps, lifts of one layer after a cleaning, Z down while the carriage runs out, a new part.
void TestMachinePhysics::allowsWhatTheProcessDoes()
{
    TestMachine test;
    test.makeReady();
    Machine &machine = test.machine;
    machine.sweepX();
    test.pass(2);
    test.placePage(false, 256);
    machine.arm(TestMachine::picture(false, 256, {{3, 3}}));
    machine.sweepX();
    test.pass(0.75);
    QVERIFY(machine.transferComplete() && machine.xMoving());
    machine.moveZ(2030);
    test.pass(2);
    for (int z : {2000, 1970, 1940}) {
        machine.moveZ(z);
        test.pass(1);
        for (int i = 0; i < 2; ++i) {
            machine.sweepX();
            test.pass(2);
        }
        QCOMPARE(machine.partTop(), double(z));
    }
    machine.moveZ(17000);
    test.pass(2);
    machine.emptyPlatform();
    machine.homeZ();
    QVERIFY2(!machine.violations().count(), QJsonDocument(machine.violations().list()).toJson());
}

void TestMachinePhysics::encoderCountsFromItsPreset()
{
    for (const auto &[resolution, home, far] :
         {std::tuple{25400.0, 20000, 530001}, std::tuple{1200.0, 945, 25040}}) {
        ManualClock clock;
        Machine machine(clock, resolution);
        machine.homeX();
        clock.seconds += 10;
        QCOMPARE(machine.xCounts(), home);
        machine.presetEncoder(1);
        machine.sweepX();
        clock.seconds += 10;
        QCOMPARE(machine.encoderPosition(), far);
    }
}

QTEST_GUILESS_MAIN(TestMachinePhysics)
#include "test_machine.moc"
