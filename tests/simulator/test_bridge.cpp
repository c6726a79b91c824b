// The wire, byte by byte, and what the boards answer.

#include "Bridge.h"
#include "ManualClock.h"

#include <QJsonDocument>
#include <QSignalSpy>
#include <QtTest>

namespace
{
QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}
} // namespace

class TestBridge : public QObject
{
    Q_OBJECT
private slots:
    void takesFrames_data();
    void takesFrames();
    void answersByLiteralBytes();
    void readsAreLatched();
    void losesDamagesAndDelaysAnswers();
};

void TestBridge::takesFrames_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("frames");
    QTest::addColumn<QString>("violation");
    const QByteArray speed = hex("aaaa420000008e0000009001000008000000695555");
    QTest::newRow("X speed") << speed << 1 << "";
    QTest::newRow("noise between") << hex("00ff55aa01") + speed + hex("5555a5") + speed << 2 << "";
    QTest::newRow("wrong checksum") << hex("aaaa420000008e0000009001000008000000685555") << 0 << "checksum";
    QTest::newRow("a byte short") << hex("aaaa420000008e00000090010000080000695555") << 0 << "frame-length";
    QTest::newRow("cut by the next") << hex("aaaa420000008e") + speed << 1 << "cut-frame";
    QTest::newRow("lone tail byte") << hex("aaaa420000008e000055900100000800000069 5555") << 0
                                    << "unescaped-byte";
    // Y to 0x55AAA5: each of the three is escaped, and an escaped tail byte does not end the frame.
    QTest::newRow("escapes") << hex("aaaa4200000060000000a5a5a5aaa55500080000004e5555") << 1 << "axis-limit";
    QTest::newRow("no request bit") << hex("aaaa020000007000000000000000080000007a5555") << 1
                                    << "request-form";
    QTest::newRow("unknown command") << hex("aaaa42000000990000000000000008000000e35555") << 1
                                     << "unknown-command";
    QTest::newRow("unknown board") << hex("aaaa47000000700000000000000008000000bf5555") << 0 << "";
}

void TestBridge::takesFrames()
{
    QFETCH(QByteArray, line);
    QFETCH(int, frames);
    QFETCH(QString, violation);
    TestMachine test;
    Bridge bridge(test.machine);
    QSignalSpy answers(&bridge, &Bridge::send);
    for (char byte : line)
        bridge.receive(QByteArray(1, byte));
    QCOMPARE(answers.size(), frames);
    QCOMPARE(test.machine.violations().count() > 0, !violation.isEmpty());
    QVERIFY2(violation.isEmpty() || test.machine.violations().contains(violation),
             QJsonDocument(test.machine.violations().list()).toJson());
}

void TestBridge::answersByLiteralBytes()
{
    TestMachine test;
    Bridge bridge(test.machine);
    QSignalSpy answers(&bridge, &Bridge::send);
    // The bus test, the platform that is seated, the closed ink door, no feed demanded.
    for (const auto &[request, answer] :
         {std::pair{"aaaa43000000010404010000000008000000a5555555",
                    "aaaa03000000010404010000000008000000155555"},
          {"aaaa42000000710000000000000008000000bb5555", "aaaa020000007100010100000000080000007d5555"},
          {"aaaa45000000330000000000000008000000805555", "aaaa05000000330001000000000008000000415555"},
          {"aaaa43000000360000000000000008000000815555", "aaaa03000000360000000000000008000000415555"}}) {
        answers.clear();
        bridge.receive(hex(request));
        QCOMPARE(answers.value(0).value(0).toByteArray().toHex(), QByteArray(answer));
    }
    QCOMPARE(test.machine.violations().count(), 0);
}

void TestBridge::readsAreLatched()
{
    TestMachine test;
    test.makeReady();
    Bridge bridge(test.machine);
    QSignalSpy answers(&bridge, &Bridge::send);
    const auto ask = [&](int command) {
        frame::Record request;
        request.id = 0x42;
        request.data[0] = uint8_t(command);
        bridge.receive(frame::encode(request));
        return answers.takeFirst()[0].toByteArray();
    };
    ask(0x81);
    ask(0x82);
    test.machine.moveY(0x55AA);
    test.pass(1);
    // The position is the one of the query before; then it comes with both bytes escaped.
    QCOMPARE(ask(0x81).toHex(), QByteArray("aaaa0200000081000000e02e000008000000995555"));
    QCOMPARE(ask(0x81).toHex(), QByteArray("aaaa0200000081000000a5aaa5550000080000008a5555"));
    QCOMPARE(ask(0x84).mid(10, 2).toHex(), QByteArray("d007")); // Z is told as it is
    QCOMPARE(ask(0x82).mid(10, 2).toHex(), QByteArray("204e")); // the first X after homing: 20000
}

void TestBridge::losesDamagesAndDelaysAnswers()
{
    TestMachine test;
    Bridge bridge(test.machine);
    QSignalSpy answers(&bridge, &Bridge::send);
    const QByteArray question = hex("aaaa42000000710000000000000008000000bb5555");
    const QByteArray answer = hex("aaaa020000007100010100000000080000007d5555");
    const auto answered = [&](const LineFaults &faults) {
        answers.clear();
        bridge.faults = faults;
        bridge.receive(question);
        return answers.isEmpty() ? QByteArray() : answers[0][0].toByteArray();
    };
    LineFaults drop, corrupt, silent, dead, late;
    drop.drop = corrupt.corrupt = late.late = 1;
    late.lateMs = 1;
    silent.silent = dead.dead = {2};
    for (const LineFaults &faults : {drop, silent, dead})
        QCOMPARE(answered(faults), QByteArray());
    QVERIFY(!answered(corrupt).isEmpty() && answered(corrupt) != answer);
    QCOMPARE(answered(late), QByteArray());
    QTRY_COMPARE(answers.size(), 1);
    QCOMPARE(answers[0][0].toByteArray(), answer);
    QCOMPARE(answered({}), answer);
}

QTEST_GUILESS_MAIN(TestBridge)
#include "test_bridge.moc"
