#include "tests/material/ClimateRig.h"

#include "events/EventHandler.h"
#include "links/Usb2Can.h"
#include "material/TempCtl.h"

#include <QtTest>

#include <memory>

namespace
{
constexpr quint32 holdPrint[] = {0x33101, 0x33102, 0x33103, 0x33104,  0x33106,  0x33201, 0x33202,
                                 0x33203, 0x33204, 0x33301, 0x33302,  0x33303,  0x33304, 0x33305,
                                 0x64102, 0x64103, 0x64104, 0xffff01, 0xffff02, 0xffff03};
constexpr quint32 holdNone[] = {0x33105, 0x33205, 0x64302, 0x64303, 0x64304, 0x64305};
constexpr int headDegrees = 70; // of every sensor; the head library says 70.9

/// Zone z of group g has 10*row+g+z degrees, head byte n 66+10*row+n; the ids and commands are wrong.
QByteArray tempBin(int version = 16)
{
    QByteArray bytes(808, '\xEE');
    bytes.replace(0, 4, QByteArray(1, char(version)) + QByteArray(3, '\0'));
    for (int row = 0; row < 3; ++row) {
        for (int group = 0; group < 8; ++group)
            for (int zone = 1; zone <= 7; ++zone)
                bytes[4 + group * 64 + row * 16 + 4 + zone] = char(10 * row + group + zone);
        for (int n = 0; n < 9; ++n)
            bytes[772 + row * 9 + n] = char(66 + 10 * row + n);
    }
    return bytes;
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

    /// The boards at the set-points of a mode of tempBin().
    void boardsAt(int row)
    {
        const QVector<QPair<int, int>> groups = {{3, 0x31}, {3, 0x32}, {3, 0x33}, {3, 0x34},
                                                 {6, 0x41}, {6, 0x43}, {5, 0x32}, {5, 0x71}};
        for (int g = 0; g < groups.size(); ++g) {
            const int t = 10 * row + g;
            m_rig->bridge.setBytes(
                groups[g].first, groups[g].second,
                {{1, t + 1}, {2, t + 2}, {3, t + 3}, {4, t + 4}, {5, t + 5}, {6, t + 6}, {7, t + 7}});
        }
    }

private slots:
    void initTestCase()
    {
        m_rig = std::make_unique<ClimateRig>();
        EventHandler::instance();
    }
    void cleanupTestCase() { m_rig.reset(); }
    void init()
    {
        m_rig->bridge.reset();
        usb2Can()->SetFilter(3, false);
        EventHandler::clearEvent(0x64304);
        EventHandler::clearEvent(0xffff03);
        writeFile("config/temp.bin", tempBin());
        m_rig->log.clear();
    }

    void fileCountsOnlyWholeAndInItsVersion()
    {
        const std::tuple<QByteArray, bool, int> cases[] = {
            {tempBin(), true, 0}, {tempBin(15), false, 0}, {tempBin().left(800), false, 1}, {"", false, 1}};
        for (const auto &[bytes, taken, logged] : cases) {
            m_rig->log.clear();
            writeFile("config/temp.bin", bytes);
            TempCtl ctl;
            QCOMPARE(m_rig->log.count("temp file"), logged);
            const TempProfile printing = profile(ctl, 1);
            QCOMPARE(int(printing.heads[8]), taken ? 84 : 0);
            QCOMPARE(int(printing.groups[5].degrees[6]), taken ? 22 : 0);
        }
    }

    void modeGoesToHeadsAndToBoardsThatAnswer()
    {
        TempCtl ctl;
        ctl.setMode(1);
        for (int n = 0; n < 9; ++n)
            QCOMPARE(m_rig->hib->setPoints[n].load(), 76.0f + n);
        QCOMPARE(m_rig->commands(), QString("3:37 3:38 3:39 3:3a 6:44 6:45 5:40 5:72"));
        QCOMPARE(m_rig->data(6, 0x44), QStringList("44 0f 10 11 12 13 14 15"));

        m_rig->bridge.clearRecord();
        ctl.setMode(3); // there is none
        m_rig->bridge.fail(FakeBridge::Silent, 3, FakeBridge::any, 1);
        ctl.setMode(2);
        QCOMPARE(m_rig->commands(), QString("3:37 6:44 6:45 5:40 5:72"));
        ctl.setMode(2);
        QCOMPARE(m_rig->bridge.count(3), 5);
    }

    void deviationsBeyondTheBandRaise()
    {
        TempCtl ctl;
        ctl.setMode(2);
        for (const int by : {5, -6, 15, -15, 16, -16}) {
            TempProfile warm = profile(ctl, 2);
            warm.heads[6] = quint8(headDegrees - by); // sensor 1 of head 3
            ctl.setTable(warm);
            m_rig->bridge.setBytes(6, 0x43, {{4, 29 + by}});
            for (const quint32 id : {0xffff03, 0x64304}) {
                const bool raised = qAbs(by) > (id == 0xffff03 ? 5 : 15);
                EventHandler::setEvent(id, QString());
                ctl.periodicAt(0);
                QVERIFY2(EventHandler::isEventActive(id) == raised, qPrintable(QString::number(by)));
                QVERIFY(!raised || EventHandler::eventDetail(id).contains(by > 0 ? ">设定值" : "<设定值"));
            }
        }
    }

    void samplesGoToTheFileOnceAMinute()
    {
        TempCtl ctl;
        const int before = m_rig->lines("temp.csv").size();
        boardsAt(0);
        ctl.setMode(2);
        const QVector<QPair<qint64, int>> rounds = {{1000, 0},  {61000, 0},  {61001, 1},
                                                    {61002, 1}, {121001, 1}, {121002, 2}};
        for (const auto &[time, lines] : rounds) {
            ctl.periodicAt(time);
            QCOMPARE(m_rig->lines("temp.csv").size(), before + lines);
        }
        QVERIFY(m_rig->lines("temp.csv").last().startsWith("1,21,2,22,3,23,"));

        // A silent board adds no columns, keeps its readings and raises nothing.
        m_rig->bridge.setBytes(3, 0x31, {{1, 200}});
        usb2Can()->SetFilter(3, true);
        EventHandler::clearEvent(0x33101);
        ctl.periodicAt(200000);
        QVERIFY(!EventHandler::isEventActive(0x33101));
        QCOMPARE(int(profile(ctl, 3).groups[0].degrees[0]), 1);
    }

    void firstRoundEndsTheStartMode()
    {
        // boards, time of the second round in ms, modes sent: ready; ready after a minute; not ready
        for (const auto &[boards, secondMs, sent] :
             {std::tuple(0, 0, 1), std::tuple(0, 60000, 2), std::tuple(5, 60000, 1)}) {
            TempCtl ctl;
            boardsAt(boards);
            ctl.periodicAt(0);
            QCOMPARE(int(ctl.mode()), 2);
            ctl.setMode(0);
            m_rig->bridge.clearRecord();
            ctl.periodicAt(secondMs);
            QCOMPARE(int(ctl.mode()), 2);
            QCOMPARE(m_rig->bridge.count(5, 0x72), sent);
        }
    }

    void readyNeedsWhatAPrintDependsOn()
    {
        TempCtl ctl;
        const auto readyWith = [&ctl](quint32 id) {
            EventHandler::setEvent(id, QString());
            const bool ready = ctl.isTempReady();
            EventHandler::clearEvent(id);
            return ready;
        };
        for (quint32 id : holdPrint)
            QVERIFY2(!readyWith(id), qPrintable(QString::number(id, 16)));
        for (quint32 id : holdNone)
            QVERIFY2(readyWith(id), qPrintable(QString::number(id, 16)));
    }

    void tableIsSavedAndSentWhenInForce()
    {
        TempCtl ctl;
        ctl.setMode(2);
        m_rig->bridge.clearRecord();
        TempProfile changed = profile(ctl, 1);
        changed.heads[4] = 99;
        changed.groups[7].degrees[6] = 123;
        ctl.setTable(changed);
        changed.row = 3; // what was measured cannot be set
        ctl.setTable(changed);
        QCOMPARE(m_rig->commands(), QString());
        TempCtl loaded;
        QCOMPARE(int(profile(loaded, 1).heads[4]), 99);
        QCOMPARE(int(profile(loaded, 1).groups[7].degrees[6]), 123);
        QCOMPARE(int(profile(ctl, 3).heads[4]), headDegrees);
        changed.row = 2;
        ctl.setTable(changed);
        QCOMPARE(m_rig->data(5, 0x72), QStringList("72 12 13 14 15 16 17 7b"));
    }
};

QTEST_GUILESS_MAIN(TestTemperature)
#include "test_temperature.moc"
