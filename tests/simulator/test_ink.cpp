// The way of the wax: what flows when, what each fault does to it, and that no gram is lost on the way.

#include "Bridge.h"
#include "Commands.h"
#include "ManualClock.h"
#include "Site.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QtTest>

/// A machine with its boards and commands. Its bottles hold 1000 g each.
struct InkMachine : TestMachine {
    InkMachine()
    {
        for (int position = 1; position <= BottleRack::positions; ++position)
            machine.bottles().at(position).grams = 1000;
        makeReady();
    }
    /// A request as it is sent, "3 36"; the answer's byte.
    int ask(const QString &request, int byte = 0)
    {
        frame::Data data{};
        const QByteArray bytes = QByteArray::fromHex(request.mid(2).toLatin1());
        std::copy(bytes.begin(), bytes.end(), data.begin());
        for (const auto &board : bridge.boards()) {
            if (board->number() == request.left(1).toInt())
                data = *board->answer(data);
        }
        return data[size_t(byte)];
    }
    int pressure(int head) { return int16_t(ask("5 34", 2 * head) | ask("5 34", 2 * head + 1) << 8); }
    /// Seconds that pass, requests to boards, or commands; parted by "; ".
    void play(const QString &steps)
    {
        for (const QString &step : steps.split("; ", Qt::SkipEmptyParts)) {
            bool seconds = false;
            const double value = step.toDouble(&seconds);
            if (seconds)
                pass(value);
            else if (step[0].isDigit())
                ask(step);
            else
                QVERIFY2(runCommand(context, step.split(' '))["ok"].toBool(), qPrintable(step));
        }
    }
    double ink(const QString &group, const QString &material)
    {
        return stateOf(machine, bridge)["ink"].toObject()[group].toObject()[material].toDouble();
    }
    QByteArray violations() const { return QJsonDocument(machine.violations().list()).toJson(); }

    Bridge bridge{machine};
    Site site;
    CommandContext context{machine, bridge, site, {}, {}, {}};
};

namespace
{
/// Takes the stack to where ink is pressed.
const QString fetchStack = "2 86000000 50870a00; 5; 2 8701; 2 86000000 00c40900; 2 65000000 b0ad0100; 10";
} // namespace

class TestInk : public QObject
{
    Q_OBJECT
private slots:
    void feedsFromABottle_data();
    void feedsFromABottle();
    void feedsAHead();
    void pressesUnderTheStack_data();
    void pressesUnderTheStack();
    void stackSticks();
    void raisesViolations_data();
    void raisesViolations();
    void balanceCloses();
};

void TestInk::feedsFromABottle_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<int>("result");
    QTest::addColumn<double>("grams");
    const QString feed = "3 410001; "; // 6.5 s
    QTest::newRow("whole") << feed + "7" << 0 << 65.0;
    QTest::newRow("little left") << "bottle-grams 4 30; " + feed + "7" << 1 << 30.0;
    QTest::newRow("fails") << "feed-fail structure 1; " + feed + "7" << 1 << 0.0;
    QTest::newRow("fails once") << "feed-fail structure 1; " + feed + "7; " + feed + "7" << 0 << 65.0;
    QTest::newRow("door open") << "door inkbox open; " + feed << 1 << 0.0;
    QTest::newRow("door opened") << feed + "4; door inkbox open; 0.1" << 1 << 40.0;
    QTest::newRow("bottle pulled") << feed + "4; bottle 4 pull; 10" << 1 << 40.0;
}

void TestInk::feedsFromABottle()
{
    QFETCH(QString, steps);
    InkMachine m;
    QCOMPARE(m.ask("3 36", 4), 0);
    m.play("island structure 69.5");
    QVERIFY(m.ask("3 36", 4) == 1 && m.ask("3 36", 3) == 0 && m.ask("3 36", 2) == 0);
    QVERIFY(m.ask("3 ff", 6) > 1 && m.ask("3 ff", 4) > 1); // none has been run
    m.play(steps);
    QCOMPARE(m.ask("3 50", 2), 0);
    QTEST(m.ask("3 ff", 6), "result");
    QVERIFY(m.ask("3 ff", 4) > 1); // the other path has its own
    QFETCH(double, grams);
    const double left = steps.contains("grams") ? 30 : 1000;
    QVERIFY(qAbs(left - m.machine.bottles().at(4).grams - grams) < 1e-9);
    QVERIFY(qAbs(m.ink("fed", "structure") - grams) < 1e-9);
    QVERIFY2(!m.machine.violations().count(), m.violations());
}

void TestInk::feedsAHead()
{
    InkMachine m;
    m.play("level 2 support 50000; island structure 0.3; level 3 structure 50000; 3 420001; 3 43000001; 0.4");
    QVERIFY(m.ask("3 50", 1) == 1 && m.ask("3 50", 2) == 1);
    QCOMPARE(m.machine.ink().level(2, Support), 51830); // half of 1.2 g
    m.play("0.5");
    QVERIFY(m.ask("3 50", 1) == 0 && m.ask("3 50", 2) == 0);
    QCOMPARE(m.machine.ink().level(2, Support), 53660);
    QCOMPARE(m.machine.ink().level(3, Structure), 50915); // there was no more
    m.play("3 4404; 3 420001; 1");                        // half the time
    QCOMPARE(m.machine.ink().level(2, Support), 55490);
    QVERIFY2(!m.machine.violations().count(), m.violations());
}

void TestInk::pressesUnderTheStack_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<QList<int>>("decigrams"); // lost by each head's support tank
    QTest::addColumn<bool>("recovers");
    QTest::newRow("all") << "5 6a003f" << QList<int>{10, 10, 10} << true;
    QTest::newRow("one") << "5 58; 5 58" << QList<int>{0, 20, 0} << true;
    QTest::newRow("gushing") << "press 3 gushing; 5 6a003f" << QList<int>{10, 10, 100} << true;
    QTest::newRow("longer") << "5 7000000000000006; 5 57" << QList<int>{20, 0, 0} << true;
    QTest::newRow("no vacuum") << "vacuum 1 structure leak; 5 57" << QList<int>{10, 0, 0} << false;
    QTest::newRow("tight again") << "vacuum 1 structure leak; 5 57; vacuum 1 structure tight"
                                 << QList<int>{10, 0, 0} << true;
}

/// The program waits for -450; it takes some 8 s from -150.
void TestInk::pressesUnderTheStack()
{
    QFETCH(QList<int>, decigrams);
    InkMachine m;
    m.play(fetchStack);
    QFETCH(QString, steps);
    m.play(steps);
    for (int head = 1; head <= 3; ++head) {
        const int lost = decigrams[head - 1];
        QCOMPARE(int(std::lround((20 - m.machine.ink().tank(head, Support)) * 10)), lost);
        QVERIFY(lost ? m.pressure(head) > -310 : m.pressure(head) == -500);
    }
    m.play("5");
    QVERIFY(m.pressure(1) == -500 || m.pressure(1) > -450);
    m.play("5");
    const bool low = m.pressure(1) <= -450 && m.pressure(2) <= -450 && m.pressure(3) <= -450;
    QTEST(low, "recovers");
    QVERIFY2(!m.machine.violations().count(), m.violations());
}

void TestInk::stackSticks()
{
    for (const auto &[fault, fetched, returned] :
         {std::tuple{"free", 1, 0}, {"parked", 0, 0}, {"carriage", 1, 1}}) {
        InkMachine m;
        m.play("stack " + QString(fault) + "; " + fetchStack);
        QCOMPARE(m.ask("2 72", 2), fetched);
        m.play("2 86000000 50870a00; 5; 2 8700; 2 86000000 20120a00; 5");
        QCOMPARE(m.ask("2 72", 2), returned);
        m.play("2 85; 5"); // homing drags it along, if need be
        QVERIFY2(!m.machine.violations().count(), m.violations());
    }
}

void TestInk::raisesViolations_data()
{
    QTest::addColumn<QString>("steps");
    QTest::newRow("feed-while-busy") << "3 410001; 3 43000001";
    QTest::newRow("feed-request") << "3 4000";
    QTest::newRow("overfilled-tank") << "level 1 support 67000; 3 4201; 1";
    QTest::newRow("overfilled-island") << "island support 80; 3 4001";
    // The program was told that the door is open, began another pass, and feeds.
    QTest::newRow("feed-with-open-door") << "door inkbox open; 5 33; 2.1; 3 36; 3 4001";
    QTest::newRow("press-without-stack") << "5 57";
    QTest::newRow("press-request") << fetchStack + "; 5 6a00";
    QTest::newRow("stack-over-part") << fetchStack + "; 2 86000000 50550800"; // to 546128
}

void TestInk::raisesViolations()
{
    QFETCH(QString, steps);
    InkMachine m;
    m.play(steps);
    QCOMPARE(m.machine.violations().count(), 1);
    QVERIFY2(m.machine.violations().contains(QTest::currentDataTag()), m.violations());
}

/// Feeds that are cut short, pressing, firing and a dry head, with both paths at work.
void TestInk::balanceCloses()
{
    InkMachine m;
    BottleRack &bottles = m.machine.bottles();
    m.play("tank 1 structure 0.3; island structure 20");
    const auto inTanks = [&m](InkMaterial material) {
        return m.machine.ink().tank(1, material) + m.machine.ink().tank(2, material) +
               m.machine.ink().tank(3, material);
    };
    const double tanks[] = {inTanks(Structure), inTanks(Support)};
    const double islands[] = {20, 72};
    m.play("3 4001; 3 410001; 4.7; door inkbox open; 2; door inkbox close; 3 410001; 3; "
           "bottle 4 pull; 1; 3 4201; 3 430001; 0.37; " +
           fetchStack + "; 5 6a003f; 5 57; 3 42000001; 0.2");
    Head &head = m.machine.headArray().head(2);
    head.autofire.set(1).set(880);
    head.autofireHz = 5000;
    head.autofiring = true;
    m.play("100");
    head.autofiring = false;
    m.play("2 86000000 50870a00; 5; 2 8700; 2 85; 5; 2 65000000 d0070000; 10");
    QVERIFY2(!m.machine.violations().count(), m.violations());
    m.print(true, 256, {{0, 0}, {500, 10}, {500, 12}});
    m.pass(10);
    QVERIFY2(m.machine.violations().contains("dry-head"), m.violations()); // pressing left head 1 nothing
    for (InkMaterial material : {Structure, Support}) {
        const InkTotals &ink = m.machine.ink().totals(material);
        const int first = material == Structure ? 3 : 1;
        const double drawn = 2000 - bottles.at(first).grams - bottles.at(first + 1).grams;
        QVERIFY(drawn > 40 && qAbs(drawn - ink.fed) < 1e-9);
        QVERIFY(qAbs(m.machine.ink().island(material) - islands[material] - ink.fed + ink.nozzleFed) < 1e-9);
        QVERIFY(qAbs(inTanks(material) - tanks[material] - ink.nozzleFed + ink.printed + ink.pressed) < 1e-9);
        // Two nozzles, one an ink, 100 s; and two dots of structure by head 2.
        QVERIFY(qAbs(ink.printed - 30e-9 * (500000 + (material == Structure ? 2 : 0))) < 1e-12);
        QCOMPARE(m.ink("printed", material == Structure ? "structure" : "support"), ink.printed);
    }
    QCOMPARE(m.ink("failedFeeds", "structure"), 2.0);
}

QTEST_GUILESS_MAIN(TestInk)
#include "test_ink.moc"
