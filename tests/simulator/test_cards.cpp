// The card station from the far end of its line: the multiplexer's bytes, the chip by its data sheet, the
// card's answers to frames, and what the operator and the faults do to bottles.

#include "Bridge.h"
#include "Commands.h"
#include "ManualClock.h"
#include "Site.h"
#include "cards/CardStation.h"

#include <QJsonArray>
#include <QtTest>

namespace
{
QByteArray hex(const QString &text)
{
    return QByteArray::fromHex(text.toLatin1());
}

/// A station whose first position is selected and whose time a test moves.
struct Desk {
    BottleRack rack;
    double seconds = 0;
    QStringList violations;
    CardStation station{
        rack,
        {[this](const char *name, const QString &) { violations.append(name); }, [this] { return seconds; }}};

    Desk() { line("010101"); }
    QString line(const QString &sent)
    {
        QByteArray all;
        for (const QByteArray &answer : station.receive(hex(sent)))
            all += answer;
        return all.toHex();
    }
    void write(int address, int value) { line(QString::asprintf("0202%02x%02x", address, value)); }
    QString read(int address) { return line(QString::asprintf("0201%02x", address | 0x80)).mid(4); }
    /// One frame through the chip to the card; the answer that the FIFO holds then.
    QString send(const QString &frame, bool checksum, int lastBits)
    {
        write(0x12, checksum ? 0x80 : 0);
        write(0x13, checksum ? 0x80 : 0);
        write(0x0A, 0x80);
        for (const char byte : hex(frame))
            write(0x09, quint8(byte));
        write(0x01, 0x0C);
        write(0x0D, 0x80 | lastBits);
        QString answer;
        for (int count = read(0x0A).toInt(nullptr, 16); count > 0; --count)
            answer += read(0x09);
        return answer;
    }
    /// Steps parted by "; ": "on" (reset, field on), "pull" and "put" (bottle 1), "+ms", "w12 80", "r12 80"
    /// (reads 80), "FRAME > ANSWER" with checksums by the chip, "raw FRAME > ANSWER", "short FRAME > ANSWER".
    /// The first step that does not do so.
    QString play(const QString &script)
    {
        for (const QString &step : script.split("; ", Qt::SkipEmptyParts)) {
            const QStringList w = step.split(' ');
            const int address = w[0].mid(1).toInt(nullptr, 16);
            QString got, wanted;
            if (w[0] == "on")
                play("w01 0F; w14 83; w15 40; w2A 8D; w2B 3E; w2D 30");
            else if (w[0] == "pull")
                rack.pull(1);
            else if (w[0] == "put")
                rack.put(1);
            else if (w[0][0] == '+')
                seconds += w[0].toDouble() / 1000;
            else if (w[0][0] == 'w')
                write(address, w[1].toInt(nullptr, 16));
            else if (w.size() == 2)
                got = read(address), wanted = w[1];
            else
                got = send(w[w.size() - 3], w.size() == 3, w[0] == "short" ? 7 : 0), wanted = w.last();
            if (got != wanted.toLower().remove('-'))
                return step + ": " + got;
        }
        return {};
    }
};

const QString wake = "short 52 > 0400; raw 9320 > 1D625396BA; ";
const QString activate = "on; " + wake + "93701D625396BA > 20; E051 > 0575808102; ";
/// The first of seed 1, and what the key makes of it.
const QString challenge = "25EB8C48", answer = "C3E092DBB8CD8736";
const QString enter = "0A0100A40000023F00 > 0A019000; 0B010084000004 > 0B01" + challenge +
                      "9000; "
                      "0A010082000008" +
                      answer + " > 0A019000; ";
} // namespace

class TestCards : public QObject
{
    Q_OBJECT
private slots:
    void takesCommandsOfTheLine_data();
    void takesCommandsOfTheLine();
    void followsTheSheetAndTheStandards_data();
    void followsTheSheetAndTheStandards();
    void worksBottlesByCommand();
};

void TestCards::takesCommandsOfTheLine_data()
{
    QTest::addColumn<QString>("sent");
    QTest::addColumn<QString>("answered");
    QTest::addColumn<QString>("violations");
    QTest::newRow("select") << "010104"
                            << "010104"
                            << "";
    QTest::newRow("no chip there") << "010105 0201b7 020214 83"
                                   << ""
                                   << "";
    QTest::newRow("no such channel") << "010107 010100"
                                     << ""
                                     << "card-line card-line";
    QTest::newRow("version") << "0201b7"
                             << "020192"
                             << "";
    QTest::newRow("write and read back") << "02022a8d 0201aa"
                                         << "02012a 02018d"
                                         << "";
    QTest::newRow("garbage between") << "ffff01 0201b7 0204 55 020137 0201b7"
                                     << "020192 020192"
                                     << "card-line card-line";
    QTest::newRow("not in the sheet") << "0201a0 02021055 02023712"
                                      << "020100 020110 020137"
                                      << "card-chip card-chip card-chip";
}

void TestCards::takesCommandsOfTheLine()
{
    QFETCH(QString, sent);
    QFETCH(QString, answered);
    QFETCH(QString, violations);
    Desk desk;
    QString all;
    for (const char byte : hex(sent)) // byte by byte, as a slow line
        all += desk.line(QByteArray(1, byte).toHex());
    QCOMPARE(all, answered.remove(' '));
    QCOMPARE(desk.violations.join(' '), violations);
}

void TestCards::followsTheSheetAndTheStandards_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<QString>("violations");
    const auto add = [](const char *name, const QString &script, const char *violations = "") {
        QTest::newRow(name) << script << QString(violations);
    };
    add("interrupt bits are set and cleared", "w04 7F; r04 00; w04 85; r04 05; w04 01; r04 04");
    // The standard's own example: 00 00 gives A0 1E.
    add("checksum", "w11 3D; w09 00; w09 00; w05 04; w01 03; r05 04; r22 A0; r21 1E; r0A 00");
    add("checksum of more to come", "w11 3D; w01 03; w09 12; w09 34; r22 26; r21 CF");
    add("FIFO", "w09 11; w09 22; r0A 02; r09 11; r0A 01; w0A 80; r0A 00; r09 00");
    add("crypto bit is only cleared", "w08 0F; r08 07");
    add("nobody answers: the timer tells", "on; pull; short 52 > -; r04 54; +24; r04 54; +1; r04 55; r06 00");
    add("an answer stops the timer", "on; w04 7F; short 52 > 0400; r04 60; +99; r04 60; r0C 10");
    add("antenna off", "on; w14 80; short 52 > -", "card-chip");
    add("nothing to send", "on; w01 0C; w0D 80; w01 00; w09 52; w0D 80", "card-chip card-chip");
    add("authentication of another card family", "w01 0E; r01 00; r04 14", "card-chip");
    add("checksum expected, none came", "on; w13 80; w09 52; w01 0C; w0D 87; r06 04");

    add("a request in whole bytes is none", "on; raw 52 > -");
    add("sleeps after a halt, until it is woken",
        "on; " + wake + "93701D625396BA > 20; 5000 > -; short 26 > -; " + wake + "93701D625396BA > 20");
    add("request while ready is an error", "on; short 26 > 0400; short 26 > -; short 26 > 0400");
    add("another's identity", "on; " + wake + "93701D625397BB > -; short 26 > 0400");
    add("wrong check byte", "on; " + wake + "93701D625396BB > -", "card-frame");
    add("select without checksum", "on; " + wake + "raw 93701D625396BA > -", "card-frame");
    add("RATS with a reserved CID", "on; " + wake + "93701D625396BA > 20; E05F > -", "card-frame");
    add("the field goes off", activate + "w14 80; w14 83; 0A010084000004 > -; short 26 > 0400");
    add("pulled and put back", activate + "pull; put; 0A010084000004 > -", "");
    add("wrong block number, CID, chaining, node",
        activate + "0B0100B0000004 > -; 0A0200B0000004 > -; 1A0100B0000004 > -; 0E010000B0000004 > -",
        "card-block card-block card-block card-block");
    add("halt means nothing in blocks, deselect does",
        activate + "5000 > -; CA01 > CA01; short 26 > -; " + wake);

    const QString select = "0B0100A40000020102 > 0B019000; ";
    add("closed without authentication",
        activate +
            "0A0100A40000020102 > 0A019000; 0B0100B0000004 > 0B016982; 0A0100D600000401000000 > 0A016982");
    add("wrong cryptogram, used challenge", activate + "0A010084000004 > 0A01" + challenge +
                                                "9000; 0B0100820000080011223344556677 > 0B016300; "
                                                "0A010082000008" +
                                                answer + " > 0A016985");
    add("another key",
        activate + "0A010084000004 > 0A01" + challenge + "9000; 0B010082000108" + answer + " > 0B016A88");
    add("reads and writes", activate + enter + select +
                                "0A0100B0000004 > 0A01600900009000; 0B0100D600000401020000 > 0B019000; "
                                "0A0100B0000102 > 0A0102009000; 0B0100A40000020101 > 0B019000; "
                                "0A0100B0000008 > 0A014D545337323035009000");
    add("limits", activate + enter + select +
                      "0A0100B0000400 > 0A016B00; 0B0100B0000005 > 0B016700; 0A0100D60003020000 > 0A016700; "
                      "0B0100A40000020103 > 0B016A82; 0A0100C0000000 > 0A016D00; 0B0180B0000004 > 0B016E00");
    add("the issuer's file is locked",
        activate + enter + "0B0100A40000020101 > 0B019000; 0A0100D600000141 > 0A016982");
}

void TestCards::followsTheSheetAndTheStandards()
{
    QFETCH(QString, script);
    QFETCH(QString, violations);
    Desk desk;
    QCOMPARE(desk.play(script), QString());
    QCOMPARE(desk.violations.join(' '), violations);
}

void TestCards::worksBottlesByCommand()
{
    TestMachine m;
    Bridge bridge(m.machine);
    Site site;
    CommandContext context{m.machine, bridge, site, {}, {}, {}};
    const auto run = [&](const QString &text) { return runCommand(context, text.split(' '))["ok"].toBool(); };
    const auto bottle = [&](int position) {
        const QJsonObject b = stateOf(m.machine, bridge)["bottles"].toArray()[position - 1].toObject();
        return QString("%1 %2 %3 %4/%5 %6 %7")
            .arg(b["present"].toBool() ? "in" : "out")
            .arg(b["grams"].toDouble())
            .arg(b["type"].toString())
            .arg(b["rest"].toDouble())
            .arg(b["weight"].toDouble())
            .arg(b["sn"].toString(), b["fault"].toString());
    };
    const struct {
        const char *command;
        int position;
        const char *state;
    } steps[] = {
        {"bottle 1 pull", 1, "out 2400 MTS7205 2400/3600 WX2026S10000001 "},
        {"bottle 1 put", 1, "in 2400 MTS7205 2400/3600 WX2026S10000001 "},
        {"bottle-grams 2 12.5", 2, "in 12.5 MTS7205 3600/3600 WX2026S10000002 "},
        {"card-rest 2 11", 2, "in 12.5 MTS7205 11/3600 WX2026S10000002 "},
        {"card 2 wrong-place", 2, "in 12.5 MTJ7401 11/3600 WX2026S10000002 wrong-place"},
        {"card 2 write-fail 3", 2, "in 12.5 MTS7205 11/3600 WX2026S10000002 write-fail"},
        {"card 2 off", 2, "in 12.5 MTS7205 11/3600 WX2026S10000002 "},
        {"card 3 missing", 3, "in 1900 MTJ7401 1900/3600 WX2026S10000003 missing"},
        {"bottle-new 3 500", 3, "in 500 MTJ7401 500/500 WX2026S10000005 "},
        {"bottle-new 4 70.4 ABCDEFGHIJKLMNO", 4, "in 70.4 MTJ7401 70/70 ABCDEFGHIJKLMNO "},
    };
    for (const auto &step : steps) {
        QVERIFY2(run(step.command), step.command);
        QCOMPARE(bottle(step.position), QString(step.state));
    }
    for (const char *bad : {"bottle 0 pull", "bottle 5 pull", "bottle x pull", "bottle 1 drop",
                            "bottle-new 1", "bottle-new 1 -1", "bottle-new 1 nan", "bottle-new 1 1e9",
                            "card-rest 1 x", "bottle-new 1 5 ABCDEFGHIJKLMNOP", "card 1", "card 1 odd",
                            "card 1 write-fail", "card 1 write-fail 0", "card 7 off"})
        QVERIFY2(!run(bad), bad);
}

QTEST_GUILESS_MAIN(TestCards)
#include "test_cards.moc"
