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

class TestBackground : public QObject
{
    Q_OBJECT
    std::unique_ptr<ClimateRig> m_rig;
    BackgroundService *m_service = nullptr;
    QStringList m_messages; // "title|text|icon|buttons|key"; the services' passes run on this thread

    QStringList takeMessages() { return std::exchange(m_messages, QStringList()); }
    void setFull(const QJsonObject &full)
    {
        inkConfig()->setValue("NozzleFullValue", full);
        m_service->supervisionPass();
    }

private slots:
    void initTestCase()
    {
        m_rig = std::make_unique<ClimateRig>();
        EventHandler::instance();
        xdmControl();
        m_service = backgroundService();
        connect(
            m_service, &BackgroundService::MessageFormShowSig, this,
            [this](const QString &title, const QString &text, int icon, int btn, const QString &key) {
                m_messages << QString("%1|%2|%3|%4|%5").arg(title, text).arg(icon).arg(btn, 0, 16).arg(key);
            });
        sysConfig()->setValue("XMoveSpeed", 600.9);
        sysConfig()->setValue("WaveFormVoltage1", 80);
    }
    void cleanupTestCase() { m_rig.reset(); }
    void init()
    {
        m_rig->bridge.reset();
        for (quint8 board : {2, 3, 5, 6})
            usb2Can()->SetFilter(board, false);
        takeMessages();
        m_rig->log.clear();
    }

    // First: the bus test of the start is the service's first call of it.
    void startBringsLinksAndBoardsUpInOrder()
    {
        inkConfig()->setValue("PressTime", 3);
        usb2Can()->ClosePort();
        m_service->startUp();
        QCOMPARE(m_rig->commands(), QString("2:8e 2:85 2:70 2:70 2:82 2:82 "
                                            "3:44 3:45 3:fe 5:70 5:46 5:44 5:45 5:48 3:46 5:73 "
                                            "2:01 3:01 5:01 6:01 5:43 2:8f 5:41 5:40 5:42 "
                                            "3:37 3:38 3:39 3:3a 6:44 6:45 5:40 5:72 2:8e"));
    }

    void missingPortIsToldOnceAndTheBridgeCountsMore()
    {
        const QString cards = m_rig->cards.path(), bridge = m_rig->bridge.path();
        const std::tuple<QString, QString, int> cases[] = {
            {{}, bridge, 5}, {cards, {}, 16}, {{}, {}, 16}, {cards, bridge, 0}};
        for (const auto &[com5, com16, told] : cases) {
            usb2Can()->ClosePort();
            m_rig->setPorts(com5, com16);
            QVERIFY(m_service->startUp());
            const QStringList alarms = takeMessages().filter("00000018|");
            QCOMPARE(alarms.size(), int(told != 0));
            if (told)
                QVERIFY(alarms[0].startsWith(QString("00000018|COM%1串口打开失败，请重启|3|").arg(told)));
        }
    }

    void newFirmwareEndsTheStart()
    {
        QDir().mkdir("firmware");
        writeFile("firmware/6.bin", "1234567");
        QVERIFY(!m_service->startUp());
        QCOMPARE(m_rig->commands(), QString("6:02 6:03 6:04 6:04 6:05"));
        QCOMPARE(takeMessages(),
                 QStringList({"00000000|准备升级，请稍后|1|0|BackgroundService",
                              "00000000|6#电路板升级中 6/7|2|0|BackgroundService",
                              "00000000|6#电路板升级中 7/7|2|0|BackgroundService",
                              "00000000|所有电路升级完成,请断电重启|1|200000|BackgroundService"}));
        QVERIFY(m_service->startUp());
    }

    void homePositionTellsTheEncoder()
    {
        const QVector<QPair<int, float>> cases = {{9999, 1200.0f}, {10000, 25400.0f}};
        for (const auto &[position, resolution] : cases) {
            m_rig->bridge.setValue(2, 0x82, position);
            m_service->startUp();
            QCOMPARE(m_service->encoderResolution(), resolution);
        }
        QCOMPARE(m_rig->bridge.count(2, 1), 0); // no bus test again within the minute
    }

    void parametersStandWhereTheBoardsReadThem()
    {
        // clang-format off
        setAirPressurePara({{"PosPressure", 0x11234}, {"Nozzle1Str1", 0x0102}, {"Nozzle1Str2", 0x10304},
                            {"Nozzle1Str3", -1}, {"Nozzle1Sup2", 0x0506}, {"NegPumpSpeed1", 0x107},
                            {"NegPumpSpeed6", 8}, {"SupValve", 9}, {"StrValve", 10}, {"NegSorce", 0x0B0C},
                            {"NegSorceOffset", 13}, {"NegPumpSpeed3", "7"}});
        setInkFeedingPara({{"SupFeedingTime", 1}, {"StrFeedingTime", 0x102}, {"SupValveInhaleTime", 3},
                           {"StrValveInhaleTime", 4}, {"PressTime", 0x105}});
        // clang-format on
        QStringList sent;
        for (const BoardRequest &request : m_rig->bridge.requests())
            sent << QString::number(request.board) + ": " + request.data.toHex(' ');
        QCOMPARE(sent, QStringList({"5: 46 12 34 00 00 00 00 00", "5: 44 00 02 01 04 03 ff ff",
                                    "5: 45 00 00 00 06 05 00 00", "5: 48 07 00 00 00 00 08 00",
                                    "3: 46 09 0a 00 00 00 00 00", "5: 73 00 0c 0b 0d 00 00 00",
                                    "3: 44 01 00 00 00 00 00 00", "3: 45 02 00 00 00 00 00 00",
                                    "3: fe 03 04 00 00 00 00 00", "5: 70 00 00 00 00 00 00 05"}));
        for (const int none : {0, 256})
            setInkFeedingPara({{"PressTime", none}});
        QCOMPARE(m_rig->bridge.count(5, 0x70), 1);
    }

    // The service's own bus test: its first call was at the start, some passes may have gone by since.
    void busTestFiltersSilentBoardsUntilATestFindsThem()
    {
        CanMsg reply;
        m_rig->bridge.fail(FakeBridge::Silent, 2, 1, 1);
        m_rig->bridge.fail(FakeBridge::Silent, 5, 1, 1);
        for (int pass = 0; pass < 120 && m_messages.isEmpty(); ++pass)
            m_service->supervisionPass();
        QCOMPARE(takeMessages(), QStringList("00000002|CAN 异常-2,5 |3|200000|BackgroundService"));
        for (int pass = 1; pass < 120; ++pass)
            m_service->supervisionPass();
        QCOMPARE(sendCommand(canMessage(5, 0x41), &reply), int(SendClosed));
        QCOMPARE(m_rig->bridge.count(6, 1), 1);
        m_service->supervisionPass();
        QCOMPARE(m_rig->bridge.count(6, 1), 2);
        QCOMPARE(sendCommand(canMessage(5, 0x41), &reply), int(SendOk));
        QCOMPARE(takeMessages(), QStringList());
    }

    void headBoardFaultsAreTold()
    {
        const QString clock = "设置喷头参数异常，请重启", voltage = " setWaveForm Error !!!! ";
        const QString count = "检测到喷头异常(%1)，请尝试断电重启(检查 喷头控制板连接)";
        const std::tuple<int, int, int, float, QStringList> cases[] = {
            {3, 0, 0, 88.5105f, {}}, // within the tolerance
            {1, 0, 0, 88.52f, {"Hib#1  Mfg Code = 88.52", count.arg(1)}},
            {3, 1, 1, 88.51f, {clock + voltage}},
            {3, 0, 0, 88.51f, {}}};
        for (const auto &[boards, dotClock, voltageResult, code, told] : cases) {
            m_rig->hib->boards = boards;
            m_rig->hib->mfgCode = code;
            m_rig->hib->dotClockResult = dotClock;
            m_rig->hib->voltageResult = voltageResult;
            m_service->startUp();
            QStringList expected;
            for (const QString &text : told)
                expected << "00000000|" + text + "|3|200000|BackgroundService";
            QCOMPARE(takeMessages(), expected);
        }
    }

    void unreadableLevelAlarmsOnceAMinute()
    {
        const QString alarm = "00000001|喷头%1液位异常，请断电重启|3|200000|BackgroundService";
        const QStringList alarms{alarm.arg(1), alarm.arg(2), alarm.arg(3)};
        m_rig->hib->levelResult = 5;
        for (int pass = 0; pass < 120; ++pass) // as many as each service makes in a minute
            QVERIFY(m_service->inkServicePass(StructureInk) && m_service->inkServicePass(SupportInk));
        QCOMPARE(takeMessages(), alarms);
        m_service->inkServicePass(StructureInk);
        QCOMPARE(takeMessages(), alarms);
        m_rig->hib->levelResult = 0;
    }

    void headIsLowBelowItsFullValueLessTheMargin()
    {
        m_service->inkServicePass(SupportInk);
        const QVector<QPair<QJsonObject, bool>> cases = {
            {{{"Nozzle1_1", 20011}, {"Nozzle3_3", 20033}}, false},
            {{{"Nozzle1_1", 20011}, {"Nozzle3_3", 20034}}, true},
            {{{"Nozzle2_1", 20021}}, false}};
        for (const auto &[full, low] : cases) {
            setFull(full);
            QCOMPARE(m_service->checkHeadInkLevels(), low);
        }
        QCOMPARE(m_rig->log.count(" hd:11,13,21,23,31,33"), 2); // on changes only
    }

    void airIsSampledEachPassWhileTheStatusIsPrinting()
    {
        m_rig->bridge.setBytes(5, 0x34, {{1, 9}, {2, 1}, {3, 1}, {4, 2}, {6, 3}, {7, 0xFF}});
        m_rig->bridge.setBytes(5, 0x36, {{1, 4}, {2, 1}, {3, 9}});
        m_service->inkServicePass(SupportInk);
        for (const int status :
             {PrintStatusIdle, PrintStatusPaused, PrintStatusPrinting, PrintStatusPrinting}) {
            printStatus() = status;
            m_service->supervisionPass();
        }
        printStatus() = PrintStatusIdle;
        const QString line = ",257,2,65283,0,0,0,260,11,13,21,23,31,33,,";
        QCOMPARE(m_rig->lines("air.csv"), QStringList({line, line}));
    }

    void closingTheInkDoorEndsTheFeedEvents()
    {
        const auto eventsLeft = [this](bool closed) {
            EventHandler::setEvent(0xffff04, QString());
            EventHandler::setEvent(0xffff05, QString());
            m_rig->bridge.setBytes(5, 0x33, {{2, closed}});
            m_service->doorWatchPass();
            return EventHandler::isEventActive(0xffff04) || EventHandler::isEventActive(0xffff05);
        };
        QVERIFY(eventsLeft(false) && !m_service->isInkDoorKnownClosed());
        QVERIFY(!eventsLeft(true) && m_service->isInkDoorKnownClosed());
        QVERIFY(eventsLeft(true)); // only the moment of closing ends them
    }

    // The door opens while the cards are read, and a bottle is taken out before its turn.
    void doorOpenedWhileCardsAreRead()
    {
        const auto serials = [this] {
            QStringList all;
            for (const CardInfo &info : m_service->cards().cards)
                all << info.sn;
            return all.mid(2);
        };
        const auto setDoor = [this](bool closed) { m_rig->bridge.setBytes(5, 0x33, {{2, closed}}); };
        for (const bool closed : {false, true}) {
            setDoor(closed);
            m_service->doorWatchPass();
        }
        const QStringList before = serials();
        setDoor(false);
        m_service->doorWatchPass();
        const auto opening = connect(m_service, &BackgroundService::MessageFormShowSig, this,
                                     [&](const QString &, const QString &text) {
                                         if (text == "更新第2个墨瓶") {
                                             setDoor(false);
                                             m_rig->cards.withRack([](BottleRack &rack) { rack.pull(3); });
                                         }
                                     });
        setDoor(true);
        m_service->doorWatchPass();
        disconnect(opening);
        QCOMPARE(serials(), QStringList({before[0], before[1], "", before[3]}));
        m_service->doorWatchPass();
        QVERIFY(!m_service->isInkDoorKnownClosed());
        m_rig->cards.withRack([](BottleRack &rack) { rack.exchange(3, 3600, "NEW000000000001"); });
        setDoor(true);
        m_service->doorWatchPass();
        QVERIFY(m_service->isInkDoorKnownClosed());
        QCOMPARE(serials(), QStringList({before[0], before[1], "NEW000000000001", before[3]}));
        m_service->setBottleInUse(4, 2);
        QCOMPARE(m_service->structureBottleSerial() + m_service->supportBottleSerial(),
                 "NEW000000000001" + before[0]);
    }
};

QTEST_GUILESS_MAIN(TestBackground)
#include "test_background.moc"
