#include "tests/material/ClimateRig.h"

#include "engine/XdmControl.h"
#include "events/EventHandler.h"
#include "frame/JsonConfig.h"
#include "frame/PrintStatus.h"
#include "links/Usb2Can.h"
#include "material/BackgroundService.h"
#include "material/BoardParameters.h"

#include <QtTest>

#include <memory>

namespace
{
void configure(JsonConfig *config, const QJsonObject &values)
{
    for (auto value = values.begin(); value != values.end(); ++value)
        config->setValue(value.key(), value.value());
}

QJsonObject fullLevels(int level)
{
    QJsonObject full;
    for (int tank = 0; tank < InkLevels::tanks; ++tank)
        full.insert(InkLevels::key(tank), level);
    return full;
}
} // namespace

class TestBackground : public QObject
{
    Q_OBJECT
    std::unique_ptr<ClimateRig> m_rig;
    BackgroundService *m_service = nullptr;
    QStringList m_messages; // "title|text|icon|buttons|key"; the services' passes run on this thread

    QStringList takeMessages()
    {
        QStringList taken;
        taken.swap(m_messages);
        return taken;
    }
    void setLevels(int level)
    {
        for (auto &tank : m_rig->hib().levels)
            tank = level;
        m_service->inkServicePass();
    }

private slots:
    void initTestCase()
    {
        m_rig = std::make_unique<ClimateRig>();
        EventHandler::instance();
        xdmControl();
        m_service = backgroundService();
        QCOMPARE(machineServices(), static_cast<MachineServices *>(m_service));
        connect(
            m_service, &BackgroundService::MessageFormShowSig, this,
            [this](const QString &title, const QString &text, int icon, int btn, const QString &key) {
                m_messages << QString("%1|%2|%3|%4|%5").arg(title, text).arg(icon).arg(btn, 0, 16).arg(key);
            });
        configure(sysConfig(), {{"XMoveSpeed", 600.9}, {"WaveFormVoltage1", 80}});
        m_rig->openBridge();
    }
    void cleanupTestCase() { m_rig.reset(); }

    void init()
    {
        m_rig->bridge().reset();
        for (int board : {2, 3, 5, 6})
            usb2Can()->SetFilter(quint8(board), false);
        m_rig->hib().silentHead = 0;
        takeMessages();
        m_rig->log().clear();
    }

    // First: the bus test of the start is the service's first call of it.
    void startBringsLinksAndBoardsUpInOrder()
    {
        configure(inkConfig(), {{"PressTime", 3}});
        usb2Can()->ClosePort();
        m_service->startUp();
        QCOMPARE(m_rig->commands(), QString("2:8e 2:85 2:70 2:70 2:82 2:82 "
                                            "3:44 3:45 3:fe 5:70 5:46 5:44 5:45 5:48 3:46 5:73 "
                                            "2:01 3:01 5:01 6:01 "
                                            "5:43 2:8f 5:41 5:40 5:42 "
                                            "3:37 3:38 3:39 3:3a 6:44 6:45 5:40 5:72 "
                                            "2:8e"));
        QCOMPARE(takeMessages(), QStringList());
        QCOMPARE(m_rig->data(2, 1).first(), QString("01 04 04 01 00 00 00 00"));
        QCOMPARE(m_rig->data(5, 0x43).first(), QString("43 00 f2 00 00 00 00 00"));
        QCOMPARE(m_rig->data(5, 0x41).first(), QString("41 00 01 aa aa ff ff 00"));
        QCOMPARE(m_rig->data(5, 0x40).first(), QString("40 00 01 01 00 00 00 00"));
        QCOMPARE(m_rig->bridge().requests(2, 0x8E).last().value(), 600);
        QCOMPARE(m_rig->log().count("m_fEncoderResolution=1200"), 1);
    }

    void homePositionTellsTheEncoder_data()
    {
        QTest::addColumn<int>("position");
        QTest::addColumn<float>("resolution");
        QTest::newRow("coarse") << 9999 << 1200.0f;
        QTest::newRow("fine") << 10000 << 25400.0f;
    }
    void homePositionTellsTheEncoder()
    {
        QFETCH(int, position);
        QFETCH(float, resolution);
        m_rig->bridge().setValue(2, 0x82, position);
        m_service->startUp();
        QCOMPARE(m_service->encoderResolution(), resolution);
        QCOMPARE(m_rig->bridge().count(2, 1), 0); // no bus test again within the minute
    }

    void parametersStandWhereTheBoardsReadThem()
    {
        setAirPressurePara({{"PosPressure", 0x11234},
                            {"Nozzle1Str1", 0x0102},
                            {"Nozzle1Str2", 0x10304},
                            {"Nozzle1Str3", -1},
                            {"Nozzle1Sup2", 0x0506},
                            {"NegPumpSpeed1", 0x107},
                            {"NegPumpSpeed6", 8},
                            {"SupValve", 9},
                            {"StrValve", 10},
                            {"NegSorce", 0x0B0C},
                            {"NegSorceOffset", 13},
                            {"NegPumpSpeed3", "7"}});
        QCOMPARE(m_rig->commands(), QString("5:46 5:44 5:45 5:48 3:46 5:73"));
        const QList<QPair<int, QString>> air = {{0x46, "46 12 34 00 00 00 00 00"},
                                                {0x44, "44 00 02 01 04 03 ff ff"},
                                                {0x45, "45 00 00 00 06 05 00 00"},
                                                {0x48, "48 07 00 00 00 00 08 00"},
                                                {0x73, "73 00 0c 0b 0d 00 00 00"}};
        for (const auto &[command, bytes] : air)
            QCOMPARE(m_rig->data(5, command), QStringList(bytes));
        QCOMPARE(m_rig->data(3, 0x46), QStringList("46 09 0a 00 00 00 00 00"));

        setInkFeedingPara({{"SupFeedingTime", 1},
                           {"StrFeedingTime", 0x102},
                           {"SupValveInhaleTime", 3},
                           {"StrValveInhaleTime", 4},
                           {"PressTime", 0x105}});
        QCOMPARE(m_rig->data(3, 0x44), QStringList("44 01 00 00 00 00 00 00"));
        QCOMPARE(m_rig->data(3, 0x45), QStringList("45 02 00 00 00 00 00 00"));
        QCOMPARE(m_rig->data(3, 0xFE), QStringList("fe 03 04 00 00 00 00 00"));
        QCOMPARE(m_rig->data(5, 0x70), QStringList("70 00 00 00 00 00 00 05"));
        for (const int none : {0, 256})
            setInkFeedingPara({{"PressTime", none}});
        QCOMPARE(m_rig->bridge().count(5, 0x70), 1);
        QCOMPARE(m_rig->bridge().count(3, 0x44), 3);
    }

    void failedParametersAreLogged()
    {
        for (int board : {3, 5})
            usb2Can()->SetFilter(quint8(board), true);
        QCOMPARE(setAirPressurePara({}), 0);
        QCOMPARE(m_rig->log().count("neg press error"), 1);
        m_rig->log().clear();
        setInkFeedingPara({{"PressTime", 1}});
        QCOMPARE(m_rig->log().count("neg press error"), 4);
    }

    void busTestRunsAtTheFirstCallAndEvery120th()
    {
        BusTest test;
        for (int call = 0; call < 241; ++call)
            QCOMPARE(test.testCan(), QString());
        QCOMPARE(m_rig->bridge().count(2, 1), 3);
        QCOMPARE(m_rig->bridge().count(6, 1), 3);
        QCOMPARE(m_rig->log().count(" line:"), 4); // each board's first answer
    }

    void silentBoardIsFilteredUntilATestFindsIt()
    {
        BusTest test;
        m_rig->bridge().fail(FakeBridge::Silent, 6, FakeBridge::any, 1);
        QCOMPARE(test.testCan(), QString("6"));
        CanMsg reply;
        QCOMPARE(sendCommand(canMessage(6, 0x41), &reply), int(SendClosed));
        for (int call = 0; call < 119; ++call)
            test.testCan();
        QCOMPARE(sendCommand(canMessage(6, 0x41), &reply), int(SendClosed));
        QCOMPARE(test.testCan(), QString());
        QCOMPARE(sendCommand(canMessage(6, 0x41), &reply), int(SendOk));
    }

    void wrongEchoWithAGoodResultIsHealthy()
    {
        // The first wrong answer must be taken before the second comes: the program logs it.
        m_rig->bridge().setHandler(5, 1, [this](const BoardRequest &) {
            m_rig->log().clear();
            const QByteArray wrong = QByteArray::fromHex("7700000000000000");
            m_rig->bridge().sendAnswer(5, wrong);
            m_rig->waitForLog("line:");
            return wrong;
        });
        BusTest test;
        QCOMPARE(test.testCan(), QString());
        QCOMPARE(m_rig->bridge().count(6, 1), 1);
        QVERIFY(m_rig->log().count("77-00") > 0);
    }

    void failedBoardsAlarmByNumber()
    {
        m_rig->bridge().fail(FakeBridge::Silent, 2, 1, 1);
        m_rig->bridge().fail(FakeBridge::Silent, 5, 1, 1);
        for (int pass = 0; pass < 240 && m_messages.isEmpty(); ++pass)
            m_service->supervisionPass();
        QCOMPARE(takeMessages(), QStringList("00000002|CAN 异常-2,5 |3|200000|BackgroundService"));
        for (int board : {2, 5})
            usb2Can()->SetFilter(quint8(board), false);
    }

    void headBoards_data()
    {
        QTest::addColumn<int>("boards");
        QTest::addColumn<float>("code");
        QTest::addColumn<int>("dotClock");
        QTest::addColumn<int>("voltage");
        QTest::addColumn<QStringList>("messages");
        const QString clock = "设置喷头参数异常，请重启", voltage = " setWaveForm Error !!!! ";
        QTest::newRow("good") << 3 << 88.51f << 0 << 0 << QStringList();
        QTest::newRow("within the tolerance") << 3 << 88.5105f << 0 << 0 << QStringList();
        QTest::newRow("a board short")
            << 2 << 88.51f << 0 << 0 << QStringList("检测到喷头异常(2)，请尝试断电重启(检查 喷头控制板连接)");
        QTest::newRow("wrong code") << 1 << 88.52f << 0 << 0
                                    << QStringList{"Hib#1  Mfg Code = 88.52",
                                                   "检测到喷头异常(1)，请尝试断电重启(检查 喷头控制板连接)"};
        QTest::newRow("dot clock") << 3 << 88.51f << 1 << 0 << QStringList(clock);
        QTest::newRow("voltage") << 3 << 88.51f << 0 << 1 << QStringList(voltage);
        QTest::newRow("both") << 3 << 88.51f << 1 << 1 << QStringList(clock + voltage);
    }
    void headBoards()
    {
        QFETCH(int, boards);
        QFETCH(float, code);
        QFETCH(int, dotClock);
        QFETCH(int, voltage);
        QFETCH(QStringList, messages);
        ClimateHib &hib = m_rig->hib();
        hib.boards = boards;
        hib.mfgCode = code;
        hib.dotClockResult = dotClock;
        hib.voltageResult = voltage;
        hib.initResult = boards < 3;
        m_service->startUp();
        QCOMPARE(m_rig->log().count("Mfg Code = "), boards);
        QCOMPARE(m_rig->log().count("hib init all boards error"), boards < 3 ? 1 : 0);
        QStringList expected;
        for (const QString &text : messages)
            expected << "00000000|" + text + "|3|200000|BackgroundService";
        QCOMPARE(takeMessages(), expected);
        hib.boards = 3;
        hib.mfgCode = 88.51f;
        hib.dotClockResult = hib.voltageResult = hib.initResult = 0;
    }

    void levelsAreReadByKey()
    {
        for (int tank = 0; tank < 6; ++tank)
            m_rig->hib().levels[tank] = 100 + tank;
        m_service->inkServicePass();
        QJsonObject levels;
        m_service->getHeadInkLevels(levels);
        QCOMPARE(levels, (QJsonObject{{"Nozzle1_1", 100},
                                      {"Nozzle1_3", 101},
                                      {"Nozzle2_1", 102},
                                      {"Nozzle2_3", 103},
                                      {"Nozzle3_1", 104},
                                      {"Nozzle3_3", 105}}));
    }

    void unreadableLevelAlarmsAndStillCounts()
    {
        setLevels(0);
        m_rig->hib().silentHead = 2;
        m_rig->hib().levels[3] = 77;
        const QString alarm = "00000001|喷头2液位异常，请断电重启|3|200000|BackgroundService";
        for (int pass = 0; pass < 240; ++pass)
            m_service->inkServicePass();
        QCOMPARE(takeMessages(), QStringList(alarm)); // once a minute by both services
        m_service->inkServicePass();
        QCOMPARE(takeMessages(), QStringList(alarm));
        QJsonObject levels;
        m_service->getHeadInkLevels(levels);
        QCOMPARE(levels["Nozzle2_3"].toInt(), 77);
        m_rig->hib().silentHead = 0;
        m_service->inkServicePass();
        m_rig->hib().silentHead = 2;
        m_service->inkServicePass();
        QCOMPARE(takeMessages(), QStringList(alarm));
    }

    void headIsLowBelowItsFullValueLessTheMargin()
    {
        setLevels(-5);
        QVERIFY(!m_service->checkHeadInkLevels()); // no full values: never low
        inkConfig()->setValue("NozzleFullValue", fullLevels(60000));
        m_service->supervisionPass();
        setLevels(40000);
        m_rig->log().clear();
        QVERIFY(!m_service->checkHeadInkLevels());
        m_rig->hib().levels[5] = 39999;
        m_service->inkServicePass();
        QVERIFY(m_service->checkHeadInkLevels());
        QVERIFY(m_service->checkHeadInkLevels());
        setLevels(40000);
        QVERIFY(!m_service->checkHeadInkLevels());
        QCOMPARE(m_rig->log().count(" hd:"), 2);
        QCOMPARE(m_rig->log().count(" hd:40000,40000,40000,40000,40000,39999"), 1);
        inkConfig()->setValue("NozzleFullValue", QJsonObject{{"Nozzle1_1", 60000}});
        m_service->supervisionPass();
        m_rig->hib().levels[5] = 0;
        m_service->inkServicePass();
        QVERIFY(!m_service->checkHeadInkLevels());
    }

    void airIsSampledEachPassWhileTheStatusIsPrinting()
    {
        m_rig->bridge().setBytes(5, 0x34, {{1, 9}, {2, 1}, {3, 1}, {4, 2}, {6, 3}, {7, 0xFF}});
        m_rig->bridge().setBytes(5, 0x36, {{1, 4}, {2, 1}, {3, 9}});
        usb2Can()->SetFilter(3, true);
        setLevels(11);
        for (const int status : {PrintStatusIdle, PrintStatusPaused}) {
            printStatus() = status;
            m_service->supervisionPass();
        }
        QCOMPARE(m_rig->lines("air.csv"), QStringList());
        printStatus() = PrintStatusPrinting;
        m_service->supervisionPass();
        m_service->supervisionPass();
        printStatus() = PrintStatusIdle;
        QCOMPARE(m_rig->lines("air.csv"), QStringList({",257,2,65283,0,0,0,260,11,11,11,11,11,11,,",
                                                       ",257,2,65283,0,0,0,260,11,11,11,11,11,11,,"}));
    }

    void closingTheInkDoorEndsTheFeedEvents()
    {
        const auto door = [this](bool closed) {
            m_rig->bridge().setBytes(5, 0x33, {{2, closed}});
            m_service->doorWatchPass();
            return EventHandler::isEventActive(0xffff04) && EventHandler::isEventActive(0xffff05);
        };
        const auto raise = [] {
            EventHandler::setEvent(0xffff04, QString());
            EventHandler::setEvent(0xffff05, QString());
        };
        raise();
        QVERIFY(door(false));
        QVERIFY(!m_service->isInkDoorKnownClosed());
        QVERIFY(!door(true));
        QVERIFY(m_service->isInkDoorKnownClosed());
        raise();
        QVERIFY(door(true)); // only the moment of closing ends them
        QVERIFY(door(false));
        QVERIFY(!m_service->isInkDoorKnownClosed());
        QVERIFY(!door(true));
    }

    void bottlesStayInTheirSlots()
    {
        m_service->setBottleInUse(4, 2);
        m_service->setBottleInUse(6, 2);
        m_service->setBottleInUse(4, 1);
        const Bottles bottles = m_service->cards();
        QCOMPARE(int(bottles.strUse), 4);
        QCOMPARE(int(bottles.supUse), 2);
        QCOMPARE(bottles.cards[4].rest_weight, 0u);
        QCOMPARE(m_service->structureBottleSerial() + m_service->supportBottleSerial(), QString());
    }
};

QTEST_GUILESS_MAIN(TestBackground)
#include "test_background.moc"
