// The card reader against the simulated card station, and its line against scripted answers.

#include "CardTraffic.h"

#include "links/CardAuth.h"
#include "links/CardBus.h"
#include "links/CpuCard.h"
#include "scripted/CardLine.h"
#include "scripted/SerialLine.h"
#include "support/LogCapture.h"
#include "support/TestInstall.h"

#include <QRegularExpression>
#include <QtTest>

#include <mutex>

Q_DECLARE_METATYPE(CardFault)

namespace
{

QByteArray bytes(const char *hex)
{
    return QByteArray::fromHex(hex);
}

const QStringList preparation = {
    "select channel 1",         "write CommandReg 0F",     "write ControlReg 10",
    "write CWGsPReg 3F",        "write TxModeReg 00",      "write RxModeReg 00",
    "write TxControlReg 83",    "write TxASKReg 40",       "write ModeReg 3D",
    "write TxModeReg 00",       "write RxModeReg 00",      "write TxSelReg 15",
    "write MfRxReg 00",         "write RxSelReg 86",       "write ModWidthReg 26",
    "write RFCfgReg 70",        "write GsNReg 88",         "write CWGsPReg 3F",
    "write ModGsPReg 20",       "write TReloadReg low 1E", "write TReloadReg high 00",
    "write TModeReg 8D",        "write TPrescalerReg 3E",  "write FIFOLevelReg 80",
    "write FIFODataReg 40",     "write CommandReg 0C",     "write TReloadReg low 30",
    "write TReloadReg high 00", "write TModeReg 8D",       "write TPrescalerReg 3E",
    "write TxASKReg 40",        "write FIFOLevelReg 80",   "write FIFODataReg 40",
    "write CommandReg 0C"};

// One transfer: bits of the request, the chip's interrupts, the level, one byte at a time.
const QStringList request = {
    "read Status2Reg -> 00",      "write Status2Reg 00",         "write BitFramingReg 07",
    "read TxControlReg -> 83",    "write TxControlReg 83",       "write ComIEnReg F7",
    "read ComIrqReg -> ..",       "write ComIrqReg [0-7].",      "write CommandReg 00",
    "read FIFOLevelReg -> 0[01]", "write FIFOLevelReg 8[01]",    "write FIFODataReg 52",
    "write CommandReg 0C",        "read BitFramingReg -> 07",    "write BitFramingReg 87",
    "read ComIrqReg -> [2-7].",   "read BitFramingReg -> [08]7", "write BitFramingReg 07",
    "read ErrorReg -> 00",        "read FIFOLevelReg -> 02",     "read ControlReg -> .[08]",
    "read FIFODataReg -> .. ..",  "read ControlReg -> ..",       "write ControlReg [89]0",
    "write CommandReg 00"};

const QStringList activation = {"send 40",
                                "send 40",
                                "send 52",
                                "recv .. ..",
                                "send 93 20",
                                "recv .. .. .. .. ..",
                                "crc 93 70 .. .. .. .. ..",
                                "send 93 70 .. .. .. .. .. .. ..",
                                "recv .. .. ..",
                                "send E0 51",
                                "recv .. .*"};
// Blocks 0A and 0B in turn, each with CID 01; every answer carries the number of its command.
const QStringList authentication = {"send 0A 01 00 A4 00 00 02 3F 00",
                                    "recv 0A 01 .*90 00",
                                    "send 0B 01 00 84 00 00 04",
                                    "recv 0B 01 .. .. .. .. 90 00",
                                    "send 0A 01 00 82 00 00 08 .. .. .. .. .. .. .. ..",
                                    "recv 0A 01 90 00"};
const QStringList reading = {"send 0B 01 00 A4 00 00 02 01 01",
                             "recv 0B 01 .*90 00",
                             "send 0A 01 00 B0 00 00 20",
                             "recv 0A 01 4D 54 53 37 32 30 35 00 10 0E 00 00( ..){15} .. 7F 50 35 01 90 00",
                             "send 0B 01 00 A4 00 00 02 01 02",
                             "recv 0B 01 .*90 00",
                             "send 0A 01 00 B0 00 00 04",
                             "recv 0A 01 60 09 00 00 90 00"};
const QStringList writing = {"send 0B 01 00 A4 00 00 02 01 02", "recv 0B 01 .*90 00",
                             "send 0A 01 00 D6 00 00 04 D2 04 00 00", "recv 0A 01 90 00"};
const QStringList halt = {"crc 50 00", "send 50 00 57 CD"};

/// The first line of `lines` that is not as told, empty when all are.
QString firstDifference(const QStringList &lines, const QStringList &expected)
{
    for (int i = 0; i < qMax(lines.size(), expected.size()); ++i) {
        const QRegularExpression form(QRegularExpression::anchoredPattern(expected.value(i)));
        if (!form.match(lines.value(i)).hasMatch())
            return QString("line %1: \"%2\" instead of \"%3\"").arg(i).arg(lines.value(i), expected.value(i));
    }
    return {};
}

} // namespace

class TestCardReader : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<TestInstall> m_install;
    std::unique_ptr<CardLine> m_line;
    std::unique_ptr<LogCapture> m_log;
    std::unique_ptr<CpuCard> m_reader;

    CardTraffic traffic()
    {
        QByteArray sent, answered;
        for (const auto &entry : m_line->takeTranscript())
            (entry.fromProgram ? sent : answered) += entry.bytes;
        return {sent, answered};
    }

private slots:
    void init()
    {
        m_install = std::make_unique<TestInstall>();
        m_line = std::make_unique<CardLine>();
        m_install->setPlatform({{"COM5", m_line->path()}});
        m_log = std::make_unique<LogCapture>();
        m_reader = std::make_unique<CpuCard>(quint8(1));
        QCOMPARE(m_reader->OpenPort("COM5", 9600), 0);
        m_log->clear();
    }
    void cleanup()
    {
        m_log.reset();
        QCOMPARE(m_line->violations(), QStringList());
    }

    void readsAndWritesACard()
    {
        m_line->withRack([](BottleRack &rack) { rack.at(1).card.date = 20271231; });
        CardInfo info;
        QCOMPARE(m_reader->getCardInfo(1, &info), 0);
        QCOMPARE(info.type, "MTS7205");
        QCOMPARE(QByteArray(info.sn), QByteArray("WX2026S10000001"));
        QCOMPARE(info.weight, 3600u);
        QCOMPARE(info.rest_weight, 2400u);
        QCOMPARE(info.date, 20271231u & ~0xFFu);
        const CardTraffic read = traffic();

        QCOMPARE(m_reader->writeWeight(1, 1234), 1);
        QCOMPARE(m_line->withRack([](BottleRack &rack) { return rack.at(1).card.rest; }), 1234u);
        const CardTraffic written = traffic();

        const int start = preparation.size();
        for (const CardTraffic *part : {&read, &written}) {
            m_log.reset(); // to the console
            qInfo().noquote() << part->accesses().join('\n') << "\n--\n" << part->frames().join('\n');
            QCOMPARE(part->fault(), QString());
            QCOMPARE(firstDifference(part->accesses().mid(0, start), preparation), QString());
            QCOMPARE(firstDifference(part->accesses().mid(start, request.size()), request), QString());
            QCOMPARE(firstDifference(part->frames(), activation + authentication +
                                                         (part == &read ? reading : writing) + halt),
                     QString());
        }
    }

    void endsWithAFault_data()
    {
        QTest::addColumn<int>("position");
        QTest::addColumn<CardFault>("fault");
        QTest::addColumn<QString>("readText"); // none: it reads well
        QTest::addColumn<QString>("writeText");
        QTest::addColumn<bool>("silent");
        const auto add = [](const char *name, int position, CardFault fault, const char *read,
                            const char *write, bool silent = false) {
            QTest::newRow(name) << position << fault << QString(read) << QString(write) << silent;
        };
        add("no card", 2, CardFault::Missing, "now search card[2]", "not find card");
        // A refused key shows when a file is asked for, not when it is handed over.
        add("wrong key", 3, CardFault::WrongKey, "card[3]: get baseinfo failed", "find card[3]");
        add("lost files", 4, CardFault::Unreadable, "card[4]: get baseinfo failed", "find card[4]");
        add("refused write", 1, CardFault::WriteFail, "", "Write weight file recv: 65 81");
        add("pulled while written", 4, CardFault::PullOnWrite, "", "Write weight file recv: ");
        add("silent multiplexer", 1, CardFault::None, "select dev 1 failed", "uart recv error", true);
        add("no such position", 7, CardFault::None, "card num > MAX_DEV_NUM", "card num > MAX_DEV_NUM");
    }
    void endsWithAFault()
    {
        QFETCH(int, position);
        QFETCH(CardFault, fault);
        QFETCH(QString, readText);
        QFETCH(QString, writeText);
        QFETCH(bool, silent);
        const int place = qMin(position, BottleRack::positions);
        m_line->withRack([&](BottleRack &rack) { rack.setFault(place, fault, 1); });
        m_line->setSilent(silent);

        CardInfo info;
        info.weight = 77;
        QCOMPARE(m_reader->getCardInfo(quint32(position), &info), readText.isEmpty() ? 0 : -1);
        QCOMPARE(m_log->count(readText) > 0, true);
        QCOMPARE(info.weight, readText.isEmpty() ? 3600u : position < 7 ? 0u : 77u);
        const quint32 rest = m_line->withRack([&](BottleRack &rack) { return rack.at(place).card.rest; });
        m_log->clear();
        QCOMPARE(m_reader->writeWeight(quint32(position), 5), 0);
        QVERIFY2(m_log->count(writeText) > 0, qPrintable(m_log->text()));
        QCOMPARE(m_log->count("external authentication failed"), 0);
        QCOMPARE(m_line->withRack([&](BottleRack &rack) { return rack.at(place).card.rest; }), rest);
        QCOMPARE(m_line->takeTranscript().isEmpty(), position == 7);
    }

    void pacesAndChecksTheLine_data()
    {
        QTest::addColumn<int>("bridged");
        QTest::addColumn<QByteArray>("sent"); // also says what is asked for
        QTest::addColumn<QByteArray>("answered");
        QTest::addColumn<int>("result");
        QTest::addColumn<QString>("text");
        const auto add = [](const char *name, int bridged, const char *sent, const char *answered, int result,
                            const char *text) {
            QTest::newRow(name) << bridged << bytes(sent) << bytes(answered) << result << QString(text);
        };
        const char *const readError = "error: uart recv addr error\n";
        add("select", 1, "010103", "010103", 0, "");
        add("select, another", 1, "010103", "010102", -1, "error: source value 03 but return value 02\n");
        add("read", 1, "02018D", "020155", 0x55, "");
        add("read, four bad", 1, "02018D", "FFFFFF020255FFFFFFFFFFFF020155", 0x55, "");
        add("read, five bad", 1, "02018D", "FFFFFFFFFFFFFFFFFFFFFFFF020255020144", 0xF7, readError);
        add("read, cut off", 1, "02018D", "0201", 0xF7, readError);
        add("write", 1, "02020D87", "02010D", 0, "");
        add("write, four bad", 1, "02020D87", "02010CFFFFFFFFFFFFFFFFFF02010D", 0, "");
        add("write, fifth all but right", 1, "02020D87", "FFFFFFFFFFFFFFFFFFFFFFFFFFFF0D", 0, "");
        add("write, five bad", 1, "02020D87", "FFFFFFFFFFFFFFFFFFFFFFFF02010C", -9,
            "error: source addr 0d but return addr 0c\n");
        add("write, cut off", 1, "02020D87", "02", -9, "error: source addr 0d but return addr 00\n");
        add("bare read", 0, "8D", "66", 0x66, "");
        add("bare write", 0, "0D87", "0D00", 0, "");
        add("bare write, another", 0, "0D87", "0C00", -9, "error: source addr 0d but return addr 0c\n");
    }
    void pacesAndChecksTheLine()
    {
        QFETCH(int, bridged);
        QFETCH(QByteArray, sent);
        QFETCH(QByteArray, answered);
        QFETCH(int, result);
        QFETCH(QString, text);
        std::mutex mutex; // the line's thread against the test
        QByteArray received;
        SerialLine line;
        line.start([&](const QByteArray &chunk) {
            std::lock_guard<std::mutex> lock(mutex);
            received += chunk;
            if (received == sent)
                line.send(answered);
        });
        m_install->setPlatform({{"COM6", line.path()}});
        CardBus bus;
        QVERIFY(bus.open(6, 9600));
        const bool select = sent.at(0) == 1, read = sent.size() == 3 || sent.size() == 1;
        QCOMPARE(select ? bus.selectChannel(3)
                 : read ? bus.readRegister(0x0D, quint8(bridged))
                        : bus.writeRegister(0x0D, 0x87, quint8(bridged)),
                 result);
        QCOMPARE(m_log->text(), text);
        line.hangUp();
        QCOMPARE(received, sent);
    }

    void refusesAPortThatIsNone()
    {
        for (const char *name : {"", "COM", "COMx", "COM0", "5", "LPT5", "COM77"})
            QCOMPARE(m_reader->OpenPort(name, 9600), -1);
        QCOMPARE(m_reader->OpenPort("COM5", 1), 0); // any other speed is 115200
    }

    void encryptsChallenges()
    {
        const QByteArray whole("\x01\x02\x03\x04\x05\x06\x07\x08");
        QCOMPARE(CPU3DESencrypt(cardKey(), whole.left(4), 8), bytes("395F8045E91CF9CD"));
        QCOMPARE(CPU3DESencrypt(bytes("0123456789ABCDEF"), whole, 16),
                 bytes("6D33595F777571B2038976282900C98C"));
        QCOMPARE(CPU3DESencrypt(cardKey(), whole, 15), QByteArray());
        QCOMPARE(CPU3DESencrypt(whole + QByteArray(1, 9), whole, 16), QByteArray());
        QCOMPARE(m_log->count("destdata is too small") + m_log->count("invalid arguments"), 2);
    }
};

QTEST_GUILESS_MAIN(TestCardReader)
#include "test_card_reader.moc"
