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
    void axisKeepsItsTrapezoid();
    void dropsFallOnTheirPlaces_data();
    void dropsFallOnTheirPlaces();
    void wrongPlacesShow_data();
    void wrongPlacesShow();
    void pageIsCompleteWithItsLastColumn();
    void raisesViolations_data();
    void raisesViolations();
    void encoderCountsFromItsPreset();
};

void TestMachinePhysics::axisKeepsItsTrapezoid()
{
    const double from = 20000, start = 7;
    // Far forward and back, a move that never comes to full speed, none at all.
    for (const auto &[to, seconds] : {std::pair{550000.0, 530000.0 / 600e3 + 0.1},
                                      {-510000.0, 530000.0 / 600e3 + 0.1},
                                      {26000.0, 2 * std::sqrt(6000.0 / 6e6)},
                                      {20000.0, 0.0}}) {
        Axis axis(from, 600e3, 6e6);
        QVERIFY(qAbs(axis.moveTo(to, start) - seconds) < 1e-6);
        QCOMPARE(axis.position(start), from);
        QCOMPARE(axis.position(start + seconds + 1), to);
        QCOMPARE(axis.moving(start + seconds * 0.99), seconds > 0);
        QVERIFY(!axis.moving(start + seconds + 1e-6));
        // Half way at half time; and the time of a place is the inverse of the place at a time.
        QVERIFY(qAbs(axis.position(start + seconds / 2) - (from + to) / 2) < 1e-3);
        for (double share : {0.02, 0.3, 0.5, 0.98}) {
            const double time = start + share * seconds;
            QVERIFY(qAbs(axis.timeAt(axis.position(time)) - time) < 1e-6);
        }
        QVERIFY(std::isinf(axis.timeAt(to + (to - from) + 1)));
    }
}

void TestMachinePhysics::dropsFallOnTheirPlaces_data()
{
    QTest::addColumn<bool>("forward");
    QTest::addColumn<int>("width");
    for (int width : {256, 7008}) {
        QTest::addRow("forward, %d columns", width) << true << width;
        QTest::addRow("reverse, %d columns", width) << false << width;
    }
}

/// Dots for each head. A reverse picture comes mirrored, so its column 0 is the layer's last.
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
    const std::vector<std::pair<int, int>> dots = {
        {0, 0}, {439, 5}, {440, 100}, {879, width - 1}, {1319, 17}};
    test.print(forward, width, dots);
    test.pass(10);
    QVERIFY2(!test.machine.violations().count(), QJsonDocument(test.machine.violations().list()).toJson());
    const PassRecord &pass = test.machine.recorder().passes().at(0);
    size_t seen = 0;
    pass.structure.forEachDot([&](int row, int column) {
        QVERIFY(std::pair(row, column) == dots.at(seen++));
        const int head = pass.headOfRow(row);
        QCOMPARE(head, row / 440);
        const int layerColumn = forward ? column : width - 1 - column;
        const double x = (pass.dotX(head, column) - geometry::bedOriginX) / (25400.0 / 600);
        const double y = (pass.dotY(head, row) - geometry::bedOriginY) / 168.8;
        QVERIFY2(qAbs(x - layerColumn) < 0.01 && qAbs(y - row) < 0.01, qPrintable(QString::number(x)));
    });
    QCOMPARE(seen, dots.size());
    QCOMPARE(test.machine.recorder().dots(0, 0), 2ULL);
}

void TestMachinePhysics::wrongPlacesShow_data()
{
    QTest::addColumn<Action>("mistake");
    QTest::addColumn<double>("columns");
    QTest::addColumn<double>("rows");
    const auto row = [](const char *name, double columns, double rows, Action mistake) {
        QTest::newRow(name) << mistake << columns << rows;
    };
    const auto head2 = [](TestMachine &t) -> Head & { return t.machine.headArray().head(2); };
    row("offset of head 2", 3, 0, [=](TestMachine &t) { head2(t).pageOffset += 127; });
    row("start", -6, 0, [=](TestMachine &t) { head2(t).pageStart -= 254; });
    row("slower than the offsets are for", -60 / (25400.0 / 600), 0,
        [](TestMachine &t) { t.machine.setXSpeed(300); });
    row("head 2 entered where the test print has it", 0, 1, [=](TestMachine &t) {
        head2(t).firstRow = 438;
        head2(t).overlap = 1;
    });
    row("Y one pitch off", 0, 169 / 168.8, [](TestMachine &t) {
        t.machine.moveY(12169);
        t.pass(1);
    });
    row("encoder divider of the other encoder", 1, 0,
        [](TestMachine &t) { t.machine.headArray().clock.divider = 6350 * 1.01; });
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
    test.print(true, 256, {{0, 255}});
    // Head 1 fires last: 256 columns from 149880 on, 0.05 s behind a start without acceleration.
    const double last = 149879 + 255 * 25400.0 / 600;
    const double expected = test.clock.seconds + (last - geometry::xHome) / 600e3 + 0.05;
    QVERIFY(qAbs(test.machine.completionTime() - expected) < 1e-6);
    test.clock.seconds = expected - 1e-3;
    QVERIFY(!test.machine.transferComplete());
    test.clock.seconds = expected + 1e-3;
    QVERIFY(test.machine.transferComplete() && test.machine.xMoving());
}

void TestMachinePhysics::raisesViolations_data()
{
    QTest::addColumn<QString>("steps"); // numbers are seconds that pass
    QTest::addColumn<int>("times");
    for (const auto &[name, steps, times] :
         {std::tuple{"y-during-sweep", "sweep 0.8 Y", 1},
          {"sweep-without-image", "page sweep", 1},
          {"direction", "back-page back-picture sweep", 1},
          {"no-page", "picture sweep", 4}, // each head, and the sweep
          {"page-width", "wide-page picture sweep", 3},
          {"page-outside-cruise", "early-page picture sweep", 3},
          {"armed-twice", "page picture sweep picture", 1},
          {"page-interrupted", "page picture sweep 0.1 home-X", 1},
          {"dpi", "coarse-picture", 1},
          {"cold-head", "cold page picture sweep", 1},
          {"no-platform", "no-platform page picture sweep", 1},
          {"sweep-while-moving", "sweep 0.5 sweep", 1},
          {"part-into-heads", "page picture sweep 10 home-Z", 1},
          {"leveller-stands", "page picture sweep 10 lift halt 10 sweep", 1},
          {"z-during-page", "page picture sweep 0.1 lower", 1},
          {"axis-limit", "lower-too-far", 1},
          {"speed", "no-speed", 1},
          {"not-homed", "home-Y 1 Y", 1}}) // the counter was not zeroed
        QTest::newRow(name) << QString(steps) << times;
}

void TestMachinePhysics::raisesViolations()
{
    TestMachine t;
    Machine &m = t.machine;
    const QMap<QString, std::function<void()>> known = {
        {"sweep", [&] { m.sweepX(); }},
        {"page", [&] { t.placePage(true, 256); }},
        {"back-page", [&] { t.placePage(false, 256); }},
        {"wide-page", [&] { t.placePage(true, 288); }},
        {"early-page",
         [&] {
             t.placePage(true, 256);
             for (int head = 1; head <= 3; ++head)
                 m.headArray().head(head).pageStart = 20000;
         }},
        {"picture",
         [&] {
             m.arm(TestMachine::picture(true, 256, {{0, 0}}));
         }},
        {"back-picture",
         [&] {
             m.arm(TestMachine::picture(false, 256, {{0, 0}}));
         }},
        {"coarse-picture",
         [&] {
             Picture picture = TestMachine::picture(true, 256, {{0, 0}});
             picture.dpi = 300;
             m.arm(picture);
         }},
        {"home-X", [&] { m.homeX(); }},
        {"home-Y", [&] { m.homeY(); }},
        {"home-Z", [&] { m.homeZ(); }},
        {"Y", [&] { m.moveY(12100); }},
        {"lift", [&] { m.moveZ(1950); }},
        {"lower", [&] { m.moveZ(2100); }},
        {"lower-too-far", [&] { m.moveZ(150100); }},
        {"halt", [&] { m.setLevellerSpeed(0); }},
        {"no-speed", [&] { m.setXSpeed(0); }},
        {"no-platform", [&] { m.platformSeated = false; }},
        {"cold", [&] { m.climate().heater(2, 1).setTarget(130, t.clock.seconds); }},
    };
    t.makeReady();
    QCOMPARE(m.violations().count(), 0);
    QFETCH(QString, steps);
    for (const QString &step : steps.split(' ')) {
        if (known.contains(step))
            known[step]();
        else
            t.pass(step.toDouble());
    }
    QVERIFY2(m.violations().contains(QTest::currentDataTag()), QJsonDocument(m.violations().list()).toJson());
    QTEST(m.violations().count(), "times");
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
