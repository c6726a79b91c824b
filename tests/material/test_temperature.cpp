#include "tests/material/ClimateRig.h"

#include "events/EventHandler.h"
#include "links/Usb2Can.h"
#include "material/TempCtl.h"

#include <QtTest>

#include <memory>

namespace
{
constexpr quint32 namedZones[] = {0x33101, 0x33102, 0x33103,  0x33104,  0x33105, 0x33106, 0x33201,
                                  0x33202, 0x33203, 0x33204,  0x33205,  0x33301, 0x33302, 0x33303,
                                  0x33304, 0x33305, 0x64102,  0x64103,  0x64104, 0x64302, 0x64303,
                                  0x64304, 0x64305, 0xffff01, 0xffff02, 0xffff03};
constexpr quint32 holdNoPrint[] = {0x33105, 0x33205, 0x64302, 0x64303, 0x64304, 0x64305};

constexpr char headerStart[] = "31,,31,,31,,31,,31,,31,,31,,32,,";

/// A file in which zone z of group g has 10*row+g+z degrees and head byte n 50+10*row+n; ids and commands are
/// wrong.
QByteArray tempBin(int version = 16)
{
    QByteArray bytes(808, '\0');
    bytes[0] = char(version);
    for (int row = 0; row < 3; ++row) {
        for (int group = 0; group < 8; ++group) {
            const int record = 4 + group * 64 + row * 16;
            bytes[record] = char(0xEE);
            bytes[record + 4] = char(0xEE);
            for (int zone = 1; zone <= 7; ++zone)
                bytes[record + 4 + zone] = char(10 * row + group + zone);
        }
        for (int n = 0; n < 9; ++n)
            bytes[772 + row * 9 + n] = char(50 + 10 * row + n);
    }
    return bytes;
}

void writeTempBin(const QByteArray &bytes)
{
    QFile file("config/temp.bin");
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

TempProfile profile(TempCtl &ctl, int row)
{
    TempProfile out;
    out.row = quint8(row);
    ctl.getTable(out);
    return out;
}
} // namespace

class TestTemperature : public QObject
{
    Q_OBJECT
    std::unique_ptr<ClimateRig> m_rig;

    /// Boards and heads at the set-points of a mode of tempBin().
    void atSetPoints(int row)
    {
        for (int group = 0; group < 8; ++group) {
            const int boards[] = {3, 3, 3, 3, 6, 6, 5, 5};
            const int reads[] = {0x31, 0x32, 0x33, 0x34, 0x41, 0x43, 0x32, 0x71};
            const int base = 10 * row + group;
            m_rig->bridge().setBytes(boards[group], reads[group],
                                     {{1, base + 1},
                                      {2, base + 2},
                                      {3, base + 3},
                                      {4, base + 4},
                                      {5, base + 5},
                                      {6, base + 6},
                                      {7, base + 7}});
        }
        for (int n = 0; n < 9; ++n)
            m_rig->hib().degrees[n] = 50.9f + 10 * row + n;
    }

private slots:
    void initTestCase()
    {
        m_rig = std::make_unique<ClimateRig>();
        m_rig->openBridge();
        EventHandler::instance();
    }
    void cleanupTestCase() { m_rig.reset(); }

    void init()
    {
        m_rig->bridge().reset();
        usb2Can()->SetFilter(3, false);
        for (quint32 id : namedZones)
            EventHandler::clearEvent(id);
        writeTempBin(tempBin());
        m_rig->log().clear();
    }

    void fileIsReadOnlyInItsVersion_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("taken");
        QTest::addColumn<int>("logged");
        QTest::newRow("good") << tempBin() << true << 0;
        QTest::newRow("version 15 is quiet") << tempBin(15) << false << 0;
        QTest::newRow("short") << tempBin().left(800) << false << 1;
        QTest::newRow("empty") << QByteArray() << false << 1;
    }
    void fileIsReadOnlyInItsVersion()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, taken);
        QFETCH(int, logged);
        writeTempBin(bytes);
        TempCtl ctl;
        QCOMPARE(m_rig->log().count("temp file"), logged);
        const TempProfile printing = profile(ctl, 1);
        QCOMPARE(int(printing.heads[8]), taken ? 68 : 0);
        QCOMPARE(int(printing.groups[5].degrees[6]), taken ? 22 : 0);
        QCOMPARE(int(printing.groups[5].board), 6);
        QCOMPARE(int(printing.groups[5].command), 0x45);
    }

    void missingFileIsLogged()
    {
        QFile::remove("config/temp.bin");
        TempCtl ctl;
        QCOMPARE(m_rig->log().count("open temp file error"), 1);
        QVERIFY(ctl.getTempFile());
    }

    void modeGoesToHeadsAndBoards()
    {
        TempCtl ctl;
        QSignalSpy told(&ctl, &TempCtl::tempStatus);
        ctl.setMode(1);
        QCOMPARE(told.size(), 1);
        QCOMPARE(told[0][0].toInt(), 1);
        for (int n = 0; n < 9; ++n)
            QCOMPARE(m_rig->hib().setPoints[n].load(), 60.0f + n);
        QCOMPARE(m_rig->commands(), QString("3:37 3:38 3:39 3:3a 6:44 6:45 5:40 5:72"));
        QCOMPARE(m_rig->data(6, 0x44), QStringList("44 0f 10 11 12 13 14 15"));
        m_rig->bridge().clearRecord();
        ctl.setMode(3);
        QCOMPARE(m_rig->commands(), QString());
        QCOMPARE(int(ctl.mode()), 1);
    }

    void failedBoardIsSkippedForThisMode()
    {
        TempCtl ctl;
        m_rig->bridge().fail(FakeBridge::Silent, 3, FakeBridge::any, 1);
        ctl.setMode(2);
        QCOMPARE(m_rig->commands(), QString("3:37 6:44 6:45 5:40 5:72"));
        ctl.setMode(2);
        QCOMPARE(m_rig->bridge().count(3), 5);
    }

    void deviationsRaiseAndClear_data()
    {
        QTest::addColumn<bool>("head");
        QTest::addColumn<int>("deviation");
        QTest::addColumn<bool>("raised");
        for (const int sign : {1, -1}) {
            QTest::addRow("zone %d", 15 * sign) << false << 15 * sign << false;
            QTest::addRow("zone %d", 16 * sign) << false << 16 * sign << true;
            QTest::addRow("head %d", 5 * sign) << true << 5 * sign << false;
            QTest::addRow("head %d", 6 * sign) << true << 6 * sign << true;
        }
    }
    void deviationsRaiseAndClear()
    {
        QFETCH(bool, head);
        QFETCH(int, deviation);
        QFETCH(bool, raised);
        const quint32 id = head ? 0xffff03 : 0x64304;
        TempCtl ctl;
        ctl.setMode(2);
        atSetPoints(2);
        if (head)
            m_rig->hib().degrees[6] = 76.9f + deviation; // sensor 1 of head 3; fractions are cut
        else
            m_rig->bridge().setBytes(6, 0x43, {{4, 29 + deviation}});
        EventHandler::setEvent(id, QString());
        const quint32 before = EventHandler::eventCount(id);
        ctl.periodicAt(0);
        QCOMPARE(EventHandler::isEventActive(id), raised);
        QCOMPARE(EventHandler::eventCount(id), raised ? before + 1 : 0);
        const QString sign = deviation > 0 ? ">" : "<";
        if (raised)
            QVERIFY(
                EventHandler::eventDetail(id).contains(sign + "设定值" + QString::number(head ? 76 : 29)));
    }

    void silentGroupKeepsItsReadingsAndRaisesNothing()
    {
        TempCtl ctl;
        ctl.setMode(2);
        atSetPoints(2);
        ctl.periodicAt(0);
        m_rig->bridge().setBytes(3, 0x31, {{1, 200}});
        usb2Can()->SetFilter(3, true);
        const int before = m_rig->lines("temp.csv").size();
        ctl.periodicAt(60001);
        QVERIFY(!EventHandler::isEventActive(0x33101));
        QCOMPARE(int(profile(ctl, 3).groups[0].degrees[0]), 21);
        QCOMPARE(m_rig->lines("temp.csv").size(), before + 1);
        QVERIFY(m_rig->lines("temp.csv").last().startsWith("25,25,26,26,"));
        usb2Can()->SetFilter(3, false);
        ctl.periodicAt(60002);
        QVERIFY(EventHandler::isEventActive(0x33101));
    }

    void sampleIsWrittenOnceAMinute()
    {
        TempCtl ctl;
        QVERIFY(m_rig->lines("temp.csv").last().startsWith(headerStart));
        QCOMPARE(m_rig->lines("temp.csv").last().count(','), 2 * 56);
        const int before = m_rig->lines("temp.csv").size();
        atSetPoints(0);
        ctl.setMode(2);
        const QVector<QPair<qint64, int>> rounds = {{1000, 0},  {61000, 0},  {61001, 1},
                                                    {61002, 1}, {121001, 1}, {121002, 2}};
        for (const auto &[time, lines] : rounds) {
            ctl.periodicAt(time);
            QCOMPARE(m_rig->lines("temp.csv").size(), before + lines);
        }
        QVERIFY(m_rig->lines("temp.csv").last().startsWith("1,21,2,22,3,23,"));
        QCOMPARE(m_rig->lines("temp.csv").last().count(','), 2 * 56);
    }

    void readRequestsCarryNoOldReadings()
    {
        TempCtl ctl;
        atSetPoints(0);
        ctl.periodicAt(0);
        ctl.periodicAt(1);
        QCOMPARE(m_rig->data(5, 0x71), QStringList({"71 00 00 00 00 00 00 00", "71 00 00 00 00 00 00 00"}));
    }

    void firstRoundEndsTheStartMode_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<qint64>("secondMs");
        QTest::addColumn<int>("sent");
        QTest::newRow("ready at once") << 0 << qint64(0) << 1;
        QTest::newRow("ready after a minute: sent twice") << 0 << qint64(60000) << 2;
        QTest::newRow("not ready after a minute") << 5 << qint64(60000) << 1;
    }
    void firstRoundEndsTheStartMode()
    {
        QFETCH(int, row);
        QFETCH(qint64, secondMs);
        QFETCH(int, sent);
        TempCtl ctl;
        atSetPoints(row);
        ctl.periodicAt(0);
        QCOMPARE(int(ctl.mode()), 2);
        ctl.setMode(0);
        m_rig->bridge().clearRecord();
        ctl.periodicAt(secondMs);
        QCOMPARE(int(ctl.mode()), 2);
        QCOMPARE(m_rig->bridge().count(5, 0x72), sent);
    }

    void readyNeedsWhatAPrintDependsOn()
    {
        TempCtl ctl;
        QVERIFY(ctl.isTempReady());
        for (quint32 id : namedZones) {
            EventHandler::setEvent(id, QString());
            const bool expected = std::count(std::begin(holdNoPrint), std::end(holdNoPrint), id) != 0;
            QVERIFY2(ctl.isTempReady() == expected, qPrintable(QString::number(id, 16)));
            EventHandler::clearEvent(id);
        }
    }

    void tableIsSavedAndSentWhenInForce()
    {
        TempCtl ctl;
        ctl.setMode(2);
        m_rig->bridge().clearRecord();
        TempProfile changed = profile(ctl, 1);
        changed.heads[4] = 99;
        changed.groups[7].degrees[6] = 123;
        changed.groups[7].board = 9;
        ctl.setTable(changed);
        QCOMPARE(m_rig->commands(), QString());
        TempCtl loaded;
        QCOMPARE(int(profile(loaded, 1).heads[4]), 99);
        QCOMPARE(int(profile(loaded, 1).groups[7].degrees[6]), 123);
        QCOMPARE(int(profile(ctl, 1).groups[7].board), 5);
        QCOMPARE(int(QFileInfo("config/temp.bin").size()), 808);

        changed.row = 2;
        ctl.setTable(changed);
        QCOMPARE(m_rig->data(5, 0x72), QStringList("72 12 13 14 15 16 17 7b"));
        changed.row = 3;
        m_rig->bridge().clearRecord();
        ctl.setTable(changed);
        QCOMPARE(m_rig->commands(), QString());
        m_rig->hib().degrees[4] = 44.9f;
        QCOMPARE(int(profile(ctl, 3).heads[4]), 44);
        QCOMPARE(int(profile(ctl, 4).heads[4]), 0);
    }

    void impossibleReadingsAreZero()
    {
        TempCtl ctl;
        for (const float reading : {-1.0f, 256.0f, 1e30f, float(qQNaN())}) {
            m_rig->hib().degrees[0] = reading;
            QCOMPARE(int(profile(ctl, 3).heads[0]), 0);
        }
    }

    void deliveredTableHeatsEveryNamedZone()
    {
        QFile::remove("config/temp.bin");
        QVERIFY(QFile::copy(DELIVERED_TEMP_BIN, "config/temp.bin"));
        TempTable table;
        QVERIFY(readTempTable("config/temp.bin", table));
        fixTempGroups(table);
        int named = 0;
        const auto check = [&](int printing, int warm, quint32 id) {
            const bool isNamed = std::count(std::begin(namedZones), std::end(namedZones), id) != 0;
            named += isNamed;
            QVERIFY2(!isNamed ||
                         (printing >= 60 && printing <= 95 && printing - warm >= 15 && printing - warm <= 20),
                     qPrintable(QString::number(id, 16)));
        };
        for (int group = 0; group < tempGroups; ++group)
            for (int zone = 1; zone <= tempZonesPerGroup; ++zone)
                check(table.zone(1, group, zone), table.zone(2, group, zone),
                      zoneEventId(table, group, zone));
        for (int head = 1; head <= tempHeads; ++head)
            check(table.head(1, head, 1), table.head(2, head, 1), 0xffff00 + quint32(head));
        QCOMPARE(named, int(std::size(namedZones)));
    }
};

QTEST_GUILESS_MAIN(TestTemperature)
#include "test_temperature.moc"
