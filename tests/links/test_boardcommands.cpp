// Every board command: the bytes that it sends and what it returns.

#include "frame/JsonConfig.h"
#include "links/BoardCommands.h"
#include "links/Usb2Can.h"
#include "scripted/FakeBridge.h"
#include "support/LogCapture.h"
#include "support/TestInstall.h"

#include <QtTest>

#include <atomic>
#include <cmath>

using Call = std::function<double()>;

namespace
{

constexpr int boards[] = {boardMotion, boardInk, boardAir, boardHead};
constexpr int moving = 0x70; // the query for moving axes

} // namespace

class TestBoardCommands : public QObject
{
    Q_OBJECT
private:
    FakeBridge m_bridge;
    std::unique_ptr<TestInstall> m_install;
    std::unique_ptr<LogCapture> m_log;

    void filterAll(bool filtered)
    {
        for (int board : boards)
            usb2Can()->SetFilter(quint8(board), filtered);
    }

    QStringList sent() const
    {
        QStringList texts;
        for (const BoardRequest &request : m_bridge.requests())
            if (request.command() != moving && request.command() != 0x50)
                texts << QString::number(request.board) + ' ' + request.data.toHex();
        return texts;
    }

private slots:
    void initTestCase()
    {
        qputenv("PELORA_TIME_SCALE", "1000"); // the waits count thousands of polls
        m_install = std::make_unique<TestInstall>();
        m_install->setPlatform({{"COM16", m_bridge.path()}});
        QVERIFY(usb2Can()->OpenPort(16, 115200));
    }

    void init()
    {
        m_bridge.reset();
        m_log = std::make_unique<LogCapture>();
    }

    void cleanup()
    {
        filterAll(false);
        m_log.reset();
        QCOMPARE(m_bridge.violations(), 0);
    }

    void cleanupTestCase() { usb2Can()->ClosePort(); }

    // All boards idle and answering.
    void messages()
    {
        struct Row {
            const char *name;
            Call call;
            double result;
            const char *bytes;
        };
        const Row rows[] = {
            {"setXSpeed", [] { return setXSpeed(-2), 0; }, 0, "2 8e000000feffffff"},
            {"xMovePos", [] { return xMovePos(-1, true); }, 0, "2 86000000ffffffff"},
            {"xMovePos_Wait", [] { return xMovePos_Wait(0x80000000U, true); }, 0, "2 8600000000000080"},
            {"xMoveZero", [] { return xMoveZero(false); }, 1, "2 8e00000090010000|2 8500000000000000"},
            {"xMoveZero_Wait", [] { return xMoveZero_Wait(1); }, 0, "2 8e00000090010000|2 8500000000000000"},
            {"xStartMove", [] { return xStartMove(), 0; }, 0, "2 8300000000000000"},
            {"yMovePos", [] { return yMovePos(300.9F, true); }, 0, "2 600000002c010000"},
            {"yMovePos beyond", [] { return yMovePos(1e20F, false); }, 0, "2 60000000ffffff7f"},
            {"yMovePos no number", [] { return yMovePos(std::nanf(""), false); }, 0, "2 6000000000000000"},
            {"yMoveZero", [] { return yMoveZero(); }, 0, "2 6200000000000000|2 8000000000000000"},
            {"zMovePos", [] { return zMovePos(-300.9F, true); }, 0, "2 65000000d4feffff"},
            {"zMovePos nowhere", [] { return zMovePos(0.0F, true); }, 0, ""},
            {"zMovePos_Wait", [] { return zMovePos_Wait(145000, true); }, 0, "2 6500000068360200"},
            {"zMoveZero", [] { return zMoveZero(true); }, 0, "2 6300000000000000"},
            {"setElectricStatus", [] { return setElectricStatus(1), 0; }, 0, "2 8701000000000000"},
            {"setLevelStatus", [] { return setLevelStatus(-500), 0; }, 0, "2 8f0000000cfeffff"},
            {"ctlFrontDoor", [] { return ctlFrontDoor(1), 0; }, 0, "5 4200000001000000"},
            {"setTopFan", [] { return setTopFan(3, 4, 5, 6, 7); }, 1, "5 4100030405060700"},
            {"setTopFan keeps", [] { return setTopFan(3, 0, 0, 0); }, 1, "5 410003f2f3f4f500"},
            {"setRGB", [] { return setRGB(0xF2), 0; }, 0, "5 4300f20000000000"},
            {"setStackTemp", [] { return setStackTemp(110), 0; }, 0, "5 40006e6e00000000"},
            {"pressInk", [] { return pressInk(), 0; }, 0, "5 6a003f0000000000"},
            {"pressOneHd", [] { return pressOneHd(0x58), 0; }, 0, "5 5800000000000000"},
            {"setFanStatus", [] { return setFanStatus(1, 2, 3, 4), 0; }, 0, "6 4600010203040000"},
            {"strNozzle", [] { return strNozzleFeedingWax(3), 0; }, 0, "3 4300000100000000"},
            {"supNozzle", [] { return supNozzleFeedingWax(1), 0; }, 0, "3 4201000000000000"},
            {"strValve", [] { return strValveFeedingWax(2, true); }, 0, "3 4100010000000000"},
            {"supValve", [] { return supValveFeedingWax(1, false); }, 0, "3 4001000000000000"},
            {"no such head", [] { return strNozzleFeedingWax(0), supNozzleFeedingWax(8), 0; }, 0, ""},
            {"no such valve", [] { return strValveFeedingWax(-1, true) + supValveFeedingWax(3, 1); }, 2, ""},
        };
        m_bridge.setBytes(boardMotion, moving, {});
        m_bridge.setBytes(boardInk, 0x50, {});
        for (const Row &row : rows) {
            setTopFan(0xF1, 0xF2, 0xF3, 0xF4, 0xF5);
            m_bridge.clearRecord();
            const double result = row.call();
            QVERIFY2(result == row.result && sent().join('|') == row.bytes, row.name);
        }
        QCOMPARE(m_log->count("can request msg error"), 0);
    }

    void sensorBytes()
    {
        m_bridge.setBytes(boardMotion, moving, {{1, 7}, {2, 9}, {3, 8}});
        m_bridge.setBytes(boardMotion, 0x71, {{1, 1}, {2, 3}, {3, 1}});
        m_bridge.setBytes(boardMotion, 0x72, {{2, 1}});
        m_bridge.setBytes(boardAir, 0x33, {{1, 1}});
        const int read[] = {yzIsStop(), xIsStop(), isPlatformReady(), checkElectricStatus(),
                            isInkDoorClosed()};
        const int expected[] = {7, 8, 1, 1, 0};
        QVERIFY(std::equal(std::begin(read), std::end(read), expected));
        QCOMPARE(zMovePos(10, true), true); // while Y or Z moves nothing is sent
        QCOMPARE(m_bridge.count(boardMotion, 0x65), 0);
    }

    void twoStepReadTakesTheSecondAnswer()
    {
        const std::pair<int, Call> reads[] = {{0x81, [] { return getYPos(false); }},
                                              {0x82, [] { return getXPos(); }},
                                              {0x90, [] { return getLevelSpeed(); }}};
        for (const auto &[command, read] : reads) {
            std::atomic<int> asked{0};
            m_bridge.setHandler(boardMotion, command, [&](const BoardRequest &request) {
                return request.data.left(4) + char(++asked * 11) + QByteArray("\xFF\xFF\xFF", 3);
            });
            QCOMPARE(read(), double(22 - 256));
            QCOMPARE(asked.load(), 2);
        }
    }

    /// Boards that cannot be reached. Callers rely on each function's own word for it.
    void failedReturns()
    {
        const std::pair<const char *, std::pair<Call, double>> rows[] = {
            {"xMovePos", {[] { return xMovePos(1, true); }, 0}},
            {"xMovePos_Wait", {[] { return xMovePos_Wait(1, true); }, 3}},
            {"xMoveZero", {[] { return xMoveZero(true); }, 0}},
            {"xMoveZero_Wait", {[] { return xMoveZero_Wait(false); }, 3}},
            {"yMovePos", {[] { return yMovePos(1, true); }, 6}},
            {"yMoveZero", {[] { return yMoveZero(); }, 6}},
            {"yzIsStop", {[] { return zMovePos(1, true) + zMovePos_Wait(0, true); }, 2}},
            {"zMoveZero", {[] { return zMoveZero(true); }, 6}},
            {"xIsStop", {[] { return xIsStop(); }, 6}},
            {"getZPos", {[] { return double(getZPos()); }, 0}},
            {"isInkDoorClosed", {[] { return isInkDoorClosed(); }, 0}},
            {"isPlatformReady", {[] { return isPlatformReady(); }, 0}},
            {"checkElectricStatus", {[] { return checkElectricStatus(); }, 2}},
            {"setTopFan", {[] { return setTopFan(1, 1, 1, 1); }, 6}},
            {"strValveFeedingWax", {[] { return strValveFeedingWax(1, false); }, 1}},
            {"setFanStatus", {[] { return updateFanSpeeds(3), 0; }, 0}},
        };
        filterAll(true);
        for (const auto &[name, expected] : rows) {
            QVERIFY2(expected.first() == expected.second, name);
            const QRegularExpression line(
                QString("func: %1 line:\\d+\\]\"? ?\"?can request msg error=6").arg(name));
            QVERIFY2(m_log->text().contains(line), name);
        }
        QCOMPARE(getXPos() + getYPos(false) + getLevelSpeed(), 0);
        QCOMPARE(waitXStop(), xStopTimeout); // ends at the limit
        QCOMPARE(m_bridge.count(), 0);
    }

    void stopNeedsTwoReadsAtRest()
    {
        std::atomic<int> reads{0};
        m_bridge.setHandler(boardMotion, moving, [&reads](const BoardRequest &request) {
            const char states[] = {1, 0, 1, 0, 0};
            return request.data.left(3) + states[reads++ % 5] + QByteArray(4, '\0');
        });
        QCOMPARE(waitXStop(), 0);
        QCOMPARE(reads.load(), 5);
    }

    void fanSpeedForTemperature()
    {
        QJsonObject fan;
        for (const char *prefix : {"Nozzle1Fan", "Nozzle2Fan", "Nozzle3Fan", "TopFan"})
            fan[prefix] = QJsonObject{{"top2Temp", 60},   {"top1Temp", 50}, {"norTemp", 40},
                                      {"low1Temp", 30.5}, {"top2Rpm", 300}, {"top1Rpm", 80},
                                      {"norRpm", 60.9},   {"low1Rpm", 40},  {"low2Rpm", 20}};
        m_install->writeConfig("Fan", fan);
        const std::pair<float, int> rows[] = {{60, 300 - 256}, {59.9F, 80}, {50, 80}, {49, 60},  {40, 60},
                                              {30.5F, 40},     {30.4F, 20}, {-5, 20}, {1e9F, 44}};
        for (const auto &[temperature, rpm] : rows)
            QCOMPARE(int(fanRpmForTemp("TopFan", temperature)), rpm);
        QCOMPARE(int(fanRpmForTemp("NoFan", 5)), 0);

        setTopFan(0xF1, 0xF2, 0xF3, 0xF4, 0xF5);
        m_bridge.clearRecord();
        m_bridge.setBytes(boardHead, 0x42, {{2, 55}, {3, 45}, {4, 35}});
        m_bridge.setBytes(boardAir, 0x32, {{5, 20}});
        updateFanSpeeds(3);
        QCOMPARE(sent().join('|'),
                 QString("6 4200000000000000|6 4600503c28500000|5 3200000000000000|5 410014aaaaffff00"));
    }

    void valveFeedingWaitsBeforeAndAfter()
    {
        std::atomic<int> polls{0};
        m_bridge.setHandler(boardInk, 0x50, [&polls](const BoardRequest &request) {
            const bool busy = polls++ % 4 != 3; // idle at every fourth
            return request.data.left(2) + char(busy) + QByteArray(5, '\0');
        });
        QCOMPARE(strValveFeedingWax(1, false), false);
        QCOMPARE(polls.load(), 8);
        QCOMPARE(sent(), QStringList("3 4101000000000000"));
        strNozzleFeedingWax(2); // busy: no feed this time
        QCOMPARE(m_bridge.count(boardInk, 0x43), 0);
        supNozzleFeedingWax(2); // the other ink is idle
        QCOMPARE(m_bridge.count(boardInk, 0x42), 1);
    }
};

QTEST_GUILESS_MAIN(TestBoardCommands)
#include "test_boardcommands.moc"
