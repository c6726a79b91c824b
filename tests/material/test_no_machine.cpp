#include "tests/material/ClimateRig.h"

#include "engine/XdmControl.h"
#include "events/EventHandler.h"
#include "material/BackgroundService.h"

#include <QtTest>

// No bridge, no head library, no configuration: everything is told, nothing hangs.
class TestNoMachine : public QObject
{
    Q_OBJECT
private slots:
    void servicesTellWhatIsMissing()
    {
        ClimateRig rig(ClimateRig::NothingThere);
        EventHandler::instance();
        xdmControl();
        BackgroundService *service = backgroundService();
        QStringList messages;
        connect(service, &BackgroundService::MessageFormShowSig, this,
                [&](const QString &title, const QString &text) { messages << title + "|" + text; });
        service->startUp();
        QCOMPARE(messages, QStringList({"00000018|COM16串口打开失败，请重启",
                                        "00000000|检测到喷头异常(0)，请尝试断电重启(检查 喷头控制板连接)"}));
        messages.clear();
        for (int pass = 0; pass < 150; ++pass)
            service->supervisionPass(); // the bus test among them names no board
        QCOMPARE(messages, QStringList());
        service->inkServicePass();
        QCOMPARE(messages,
                 QStringList({"00000001|喷头1液位异常，请断电重启", "00000001|喷头2液位异常，请断电重启",
                              "00000001|喷头3液位异常，请断电重启"}));
        service->doorWatchPass();
        QVERIFY(!service->isInkDoorKnownClosed());
        QVERIFY(!service->checkHeadInkLevels());
        QCOMPARE(service->encoderResolution(), 1200.0f);
    }
};

QTEST_GUILESS_MAIN(TestNoMachine)
#include "test_no_machine.moc"
