// Every board command: the bytes that it sends and what it returns.

#include "frame/JsonConfig.h"
#include "links/BoardCommands.h"
#include "links/Usb2Can.h"
#include "support/FakeBridge.h"
#include "support/LogCapture.h"
#include "support/TestInstall.h"

#include <QtTest>

#include <atomic>
#include <cmath>
#include <future>

using Call = std::function<double()>;
Q_DECLARE_METATYPE(Call)

namespace
{

constexpr int boards[] = {boardMotion, boardInk, boardAir, boardHead};
constexpr int moving = 0x70; // the query for moving axes

Call plain(const std::function<void()> &call)
{
    return [call] {
        call();
        return 0.0;
    };
}

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
        setTopFan(0xF1, 0xF2, 0xF3, 0xF4, 0xF5);
        m_bridge.clearRecord();
    }

    void cleanup()
    {
        filterAll(false);
        m_log.reset();
        QCOMPARE(m_bridge.violations(), 0);
    }

    void cleanupTestCase() { usb2Can()->ClosePort(); }

    void messages_data()
    {
        QTest::addColumn<Call>("call");
        QTest::addColumn<double>("result");
        QTest::addColumn<QString>("bytes");
        const auto row = [](const char *name, const Call &call, double result, const char *bytes) {
            QTest::newRow(name) << call << result << QString(bytes);
        };
        row("setXSpeed", plain([] { setXSpeed(-2); }), 0, "2 8e000000feffffff");
        row(
            "xMovePos", [] { return xMovePos(0x12345, false); }, 0, "2 8600000045230100");
        row(
            "xMovePos wait", [] { return xMovePos(-1, true); }, 0, "2 86000000ffffffff");
        row(
            "xMovePos_Wait", [] { return xMovePos_Wait(0x80000000U, true); }, 0, "2 8600000000000080");
        row(
            "xMoveZero", [] { return xMoveZero(false); }, 1, "2 8e00000090010000|2 8500000000000000");
        row(
            "xMoveZero wait", [] { return xMoveZero(true); }, 0, "2 8e00000090010000|2 8500000000000000");
        row(
            "xMoveZero_Wait", [] { return xMoveZero_Wait(true); }, 0,
            "2 8e00000090010000|2 8500000000000000");
        row("xStartMove", plain([] { xStartMove(); }), 0, "2 8300000000000000");
        row(
            "yMovePos", [] { return yMovePos(300.9F, true); }, 0, "2 600000002c010000");
        row(
            "yMovePos beyond", [] { return yMovePos(1e20F, false); }, 0, "2 60000000ffffff7f");
        row(
            "yMovePos no number", [] { return yMovePos(std::nanf(""), false); }, 0, "2 6000000000000000");
        row(
            "yMoveZero", [] { return yMoveZero(); }, 0, "2 6200000000000000|2 8000000000000000");
        row(
            "zMovePos", [] { return zMovePos(-300.9F, true); }, 0, "2 65000000d4feffff");
        row(
            "zMovePos nowhere", [] { return zMovePos(0.0F, true); }, 0, "");
        row(
            "zMovePos_Wait", [] { return zMovePos_Wait(145000, true); }, 0, "2 6500000068360200");
        row(
            "zMoveZero", [] { return zMoveZero(true); }, 0, "2 6300000000000000");
        row("setElectricStatus", plain([] { setElectricStatus(1); }), 0, "2 8701000000000000");
        row("setLevelStatus", plain([] { setLevelStatus(-500); }), 0, "2 8f0000000cfeffff");
        row("ctlFrontDoor", plain([] { ctlFrontDoor(1); }), 0, "5 4200000001000000");
        row(
            "setTopFan", [] { return setTopFan(3, 4, 5, 6, 7); }, 1, "5 4100030405060700");
        row(
            "setTopFan keeps", [] { return setTopFan(3, 0, 0, 0); }, 1, "5 410003f2f3f4f500");
        row("setRGB", plain([] { setRGB(0xF2); }), 0, "5 4300f20000000000");
        row("setStackTemp", plain([] { setStackTemp(110); }), 0, "5 40006e6e00000000");
        row("pressInk", plain([] { pressInk(); }), 0, "5 6a003f0000000000");
        row("pressOneHd", plain([] { pressOneHd(0x58); }), 0, "5 5800000000000000");
        row("setFanStatus", plain([] { setFanStatus(1, 2, 3, 4); }), 0, "6 4600010203040000");
        row("strNozzle", plain([] { strNozzleFeedingWax(3); }), 0, "3 4300000100000000");
        row("supNozzle", plain([] { supNozzleFeedingWax(1); }), 0, "3 4201000000000000");
        row(
            "strValve", [] { return strValveFeedingWax(2, true); }, 0, "3 4100010000000000");
        row(
            "supValve", [] { return supValveFeedingWax(1, false); }, 0, "3 4001000000000000");
        row("no such head", plain([] { strNozzleFeedingWax(0), supNozzleFeedingWax(8); }), 0, "");
        row(
            "no such valve", [] { return strValveFeedingWax(-1, true) + supValveFeedingWax(3, true); }, 2,
            "");
    }

    // All boards idle and answering.
    void messages()
    {
        QFETCH(Call, call);
        QFETCH(QString, bytes);
        m_bridge.setBytes(boardMotion, moving, {});
        m_bridge.setBytes(boardInk, 0x50, {});
        QTEST(call(), "result");
        QCOMPARE(sent().join('|'), bytes);
        QCOMPARE(m_log->count("can request msg error"), 0);
    }

    void sensors()
    {
        m_bridge.setBytes(boardMotion, moving, {{1, 7}, {2, 9}, {3, 8}});
        QCOMPARE(yzIsStop(), 7);
        QCOMPARE(xIsStop(), 8);
        m_bridge.setBytes(boardMotion, 0x71, {{1, 1}, {2, 3}, {3, 1}});
        QCOMPARE(isPlatformReady(), 1);
        m_bridge.setBytes(boardMotion, 0x71, {{1, 1}, {2, 1}, {3, 0}});
        QCOMPARE(isPlatformReady(), 0);
        m_bridge.setBytes(boardMotion, 0x72, {{2, 1}});
        QCOMPARE(checkElectricStatus(), 1);
        QCOMPARE(m_log->count("02-00-00-00-72-00-00-00-00-00-00-00 72-00-01-00-00-00-00-00"), 1);
        m_bridge.setBytes(boardAir, 0x33, {{2, 5}});
        QVERIFY(isInkDoorClosed());
        m_bridge.setBytes(boardAir, 0x33, {{1, 1}});
        QVERIFY(!isInkDoorClosed());
        m_bridge.setValue(boardMotion, 0x84, -77);
        QCOMPARE(getZPos(), -77.0F);
        QCOMPARE(zMovePos(10, true), true); // while Y or Z moves nothing is sent
        QCOMPARE(zMovePos_Wait(10, true), 1);
        QCOMPARE(m_bridge.count(boardMotion, 0x65), 0);
        QCOMPARE(m_log->count("[func: zMovePos line:"), 1);
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

    void yPositionIsCompared()
    {
        m_bridge.setValue(boardMotion, 0x81, 100);
        m_bridge.setBytes(boardMotion, moving, {});
        yMovePos(100.0F, false);
        getYPos(true);
        yMovePos(100.5F, false);
        getYPos(false);
        QCOMPARE(m_install->log("ydata.csv").count(",100"), 0);
        getYPos(true);
        QCOMPARE(m_install->log("ydata.csv").count(",100,100.5\n"), 1);
    }

    void failedReturns_data()
    {
        QTest::addColumn<Call>("call");
        QTest::addColumn<double>("result");
        QTest::addColumn<QString>("function");
        const auto row = [](const char *name, const Call &call, double result) {
            QTest::newRow(name) << call << result << QString(name).section(' ', 0, 0);
        };
        row("setXSpeed", plain([] { setXSpeed(1); }), 0);
        row(
            "xMovePos", [] { return xMovePos(1, true); }, 0);
        row(
            "xMovePos_Wait", [] { return xMovePos_Wait(1, true); }, 3);
        row(
            "xMoveZero", [] { return xMoveZero(true); }, 0);
        row(
            "xMoveZero not waiting", [] { return xMoveZero(false); }, 0);
        row(
            "xMoveZero_Wait", [] { return xMoveZero_Wait(false); }, 3);
        row(
            "yMovePos", [] { return yMovePos(1, true); }, 6);
        row(
            "yMoveZero", [] { return yMoveZero(); }, 6);
        row(
            "yzIsStop in zMovePos", [] { return zMovePos(1, true); }, 1);
        row(
            "yzIsStop in zMovePos_Wait", [] { return zMovePos_Wait(0, true); }, 1);
        row(
            "zMoveZero", [] { return zMoveZero(true); }, 6);
        row(
            "yzIsStop", [] { return yzIsStop(); }, 6);
        row(
            "xIsStop", [] { return xIsStop(); }, 6);
        row(
            "getZPos", [] { return double(getZPos()); }, 0);
        row(
            "isInkDoorClosed", [] { return isInkDoorClosed(); }, 0);
        row(
            "isPlatformReady", [] { return isPlatformReady(); }, 0);
        row(
            "checkElectricStatus", [] { return checkElectricStatus(); }, 2);
        row("setLevelStatus", plain([] { setLevelStatus(7); }), 0);
        row(
            "setTopFan", [] { return setTopFan(1, 1, 1, 1); }, 6);
        row(
            "strValveFeedingWax", [] { return strValveFeedingWax(1, false); }, 1);
        row("supNozzleFeedingWax", plain([] { supNozzleFeedingWax(1); }), 0);
        row("setFanStatus in updateFanSpeeds", plain([] { updateFanSpeeds(3); }), 0);
    }

    void failedReturns()
    {
        QFETCH(Call, call);
        QFETCH(QString, function);
        filterAll(true);
        QTEST(call(), "result");
        QVERIFY2(m_log->text().contains(QRegularExpression("func: " + function +
                                                           " line:\\d+\\]\"? ?\"?can request msg error=6")),
                 qPrintable(m_log->text()));
        QCOMPARE(m_bridge.count(), 0);
    }

    void unloggedFailures()
    {
        filterAll(true);
        QCOMPARE(getXPos() + getYPos(false) + getLevelSpeed(), 0);
        ctlFrontDoor(1);
        QCOMPARE(m_log->count("ctlFrontDoor error"), 1);
        QCOMPARE(m_log->count("can request msg error"), 0);
    }

    // One command of several is not answered.
    void singleSilentCommands()
    {
        m_bridge.setBytes(boardMotion, moving, {});
        m_bridge.fail(FakeBridge::Silent, boardMotion, 0x65);
        m_bridge.fail(FakeBridge::Silent, boardMotion, 0x80);
        QCOMPARE(zMovePos(10, true), false);
        QCOMPARE(zMovePos_Wait(10, true), 6);
        QCOMPARE(yMoveZero(), 6);
        QCOMPARE(m_bridge.count(boardMotion, 0x65), 2); // each sent once
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

    void stuckAxes()
    {
        m_bridge.setBytes(boardMotion, moving, {{1, 1}});
        QCOMPARE(waitXStop(), 0);
        m_bridge.clearRecord();
        QCOMPARE(yMoveZero(), 0); // the time-out of the homing is not told
        QCOMPARE(m_bridge.count(boardMotion, moving), 10001);
        QCOMPARE(m_bridge.count(boardMotion, 0x80), 1);
        QCOMPARE(m_log->count("wait yz zistop timeout"), 1);
        QCOMPARE(yMovePos(1, true), yzStopTimeout);

        m_bridge.setBytes(boardMotion, moving, {{3, 1}});
        m_bridge.clearRecord();
        QCOMPARE(xMovePos(1, true), true);
        QCOMPARE(m_bridge.count(boardMotion, moving), 6001);
    }

    void deadBusEndsAtTheLimit()
    {
        filterAll(true);
        QCOMPARE(waitXStop(), xStopTimeout);
        QCOMPARE(m_log->count("filter id=2"), 6001);
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

        m_bridge.setBytes(boardHead, 0x42, {{2, 55}, {3, 45}, {4, 35}});
        m_bridge.setBytes(boardAir, 0x32, {{5, 20}});
        updateFanSpeeds(3);
        QCOMPARE(sent(), QStringList({"6 4200000000000000",
                                      "6 460050"
                                      "3c285000"
                                      "00",
                                      "5 3200000000000000", "5 410014aaaaffff00"}));
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

    void valveFeedingOutlastsADeadBoard()
    {
        m_bridge.setBytes(boardInk, 0x50, {});
        filterAll(true);
        auto feed = std::async(std::launch::async, [] { return supValveFeedingWax(2, true); });
        QTRY_VERIFY(m_log->count("filter id=3") > 2);
        QCOMPARE(m_bridge.count(), 0);
        filterAll(false);
        QCOMPARE(feed.get(), false);
        QCOMPARE(m_bridge.count(boardInk, 0x40), 1);
    }
};

QTEST_GUILESS_MAIN(TestBoardCommands)
#include "test_boardcommands.moc"
