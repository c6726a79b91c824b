// Cleaning on scripted boards: what they are told in which order, and how each fault and stop ends.

#include "JobRig.h"

#include "engine/MachineServices.h"
#include "events/EventHandler.h"
#include "frame/JsonConfig.h"

#include <QtTest>
#include <functional>

namespace
{
/// Heads that run short of ink at one look, and a hand on the stop button.
class Services : public MachineServices
{
public:
    float encoderResolution() const override { return 25400; }
    bool checkHeadInkLevels() override { return ++looks == lowAtLook; }
    bool isTempReady() const override { return true; }
    void setTemperatureMode(quint8) override {}
    QString structureBottleSerial() const override { return {}; }
    QString supportBottleSerial() const override { return {}; }

    std::atomic<int> looks{0};
    std::atomic<int> lowAtLook{0};
};

const QJsonObject places{{"XMoveSpeed", 600},      {"YCleanPos", 7000},        {"PullInkStack", 690000},
                         {"xPressInkPos", 640000}, {"zPressScrapPos", 110000}, {"XScrapEndPos", 605000},
                         {"xPreDaoMo", 660000},    {"xDaoMoPos", 620000},      {"zPreDaoMo", 100021},
                         {"zDaoMoPos", 100000}};
const QString couple = "v300 z145000 y7000 x690000 m1 x640000 ";
const QString press = "P 57 57 58 58 59 59 57 57 58 58 59 59 ";
const QString scrape = "v30 x605000 z145000 x640000 z110000 v30 x605000 z145000 v400 ";
// The ramp's steps are truncated towards zero.
const QString deep =
    "x660000 z100021 x620000 z100021 z100018 z100016 z100014 z100012 z100010 z100008 z100006 "
    "z100004 z100002 z100000 z100000 z100021 ";
const QString park = "x690000 m0 x660000 ";
const QString back = "z145000 x690000 m0";
} // namespace

class TestCleaning : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void wipesPressesAndParks();
    void missingKeysHaveTheirUsualPlaces();
    void stackFaults();
    void axisFaults();
    void stopAtEachWait();
    void waitsForTheVacuum();

private:
    QString trace() const;
    int clean(bool atStart)
    {
        m_rig.bridge.clearRecord();
        m_rig.hibCalls();
        return m_job.cleanNozzle(atStart, 1);
    }

    JobRig m_rig;
    Services m_services;
    ProbeJob m_job;
};

void TestCleaning::init()
{
    m_rig.reset();
    m_rig.install.writeConfig("Sys", places);
    m_rig.install.writeConfig("Ink", {{"PressTime", 3}});
    m_services.looks = 0;
    m_services.lowAtLook = 0;
    setMachineServices(&m_services);
    m_job.setPrintStatus(PrintStatusPrinting);
    m_job.takeMessages();
}

/// Axes, magnet, X speed and pressing, in the order of the commands.
QString TestCleaning::trace() const
{
    const QMap<int, QString> names{{0x60, "y"}, {0x65, "z"}, {0x86, "x"}, {0x8E, "v"}};
    QStringList steps;
    for (const BoardRequest &request : m_rig.bridge.requests()) {
        const int command = request.command();
        if (request.board == 2 && names.contains(command))
            steps << names[command] + QString::number(request.value());
        else if (request.board == 2 && command == 0x85)
            steps << "h";
        else if (request.board == 2 && command == 0x87)
            steps << "m" + QString::number(request.data[1]);
        else if (request.board == 5 && (command == 0x6A || (command >= 0x57 && command <= 0x59)))
            steps << (command == 0x6A ? "P" : QString::number(command, 16));
    }
    return steps.join(' ');
}

/// The first cleaning of a job, the second, and the eleventh.
void TestCleaning::wipesPressesAndParks()
{
    QCOMPARE(clean(true), 0);
    QCOMPARE(trace(), couple + "z110000 " + press + scrape + deep + park + "v400 h v600");
    QStringList fired;
    for (int call = 0; call < 6; ++call)
        fired << QString("hibAutofireStart(%1,5000,0,1,0)").arg(call % 3 + 1);
    QCOMPARE(m_rig.hibCalls("hibAutofireStart"), fired);
    for (int cleaning = 2; cleaning <= 11; ++cleaning) {
        const QString pressed = cleaning == 2 ? press : QString();
        m_rig.install.writeConfig("Ink", {{"PressTime", pressed.isEmpty() ? 0 : 3}});
        QCOMPARE(clean(false), 0);
        QCOMPARE(trace(),
                 couple + "z110000 " + pressed + scrape + (cleaning == 11 ? deep : "") + park + "v600");
        QVERIFY(m_rig.hibCalls("hibAutofire").isEmpty());
    }
}

void TestCleaning::missingKeysHaveTheirUsualPlaces()
{
    QJsonObject sys = places;
    sys.remove("YCleanPos");
    sys["XScrapEndPos"] = 0;
    m_rig.install.writeConfig("Sys", sys);
    m_rig.install.writeConfig("Ink", {{"PressTime", 0}});
    QCOMPARE(clean(false), 0);
    QVERIFY2(trace().startsWith("v300 z145000 y8000 x690000 m1 x640000 z110000 v30 x610000 "),
             qPrintable(trace()));
}

void TestCleaning::stackFaults()
{
    const QString tries = "v300 z145000 y7000 x690000 m1 x640000 x690000 m1 x640000 ";
    m_rig.stickStack(2, 0);
    QCOMPARE(clean(true), 0x11);
    QCOMPARE(trace(), tries + "m0 " + back);
    QCOMPARE(m_job.takeMessages(), QStringList("00000011|墨栈光电状态异常|3|200000"));

    m_rig.stickStack(1, 15); // the last try of each succeeds
    QCOMPARE(clean(false), 0);
    QCOMPARE(trace().count("x660000"), 16);

    m_rig.stickStack(0, 100);
    QCOMPARE(clean(false), 0x11);
    QVERIFY2(trace().endsWith(QString(park).repeated(16) + "m0"), qPrintable(trace()));
    QVERIFY(m_job.takeMessages().contains("00000011|墨栈光电状态异常|3|200000"));
}

/// Any command that is lost ends the cleaning where it is, with the axis' event.
void TestCleaning::axisFaults()
{
    const struct {
        int command;
        int code;
        QString last;
    } cases[] = {
        {0x65, 0x20004, "v300 z145000"}, {0x60, 0x20003, "v300 z145000 y7000"}, {0x86, 0x20002, "x690000"}};
    for (const auto &fault : cases) {
        init();
        m_rig.bridge.fail(FakeBridge::Silent, 2, fault.command, 1);
        QCOMPARE(clean(true), fault.code);
        QVERIFY2(trace().endsWith(fault.last), qPrintable(trace()));
    }
}

/// The heads are looked at before pressing and after each pressing of the six; all later stops are the layer
/// loop's.
void TestCleaning::stopAtEachWait()
{
    for (int look = 1; look <= 7; ++look) {
        init();
        m_services.lowAtLook = look;
        m_job.setPrintStatus(PrintStatusIdle); // seen only where the cleaning waits for ink
        QCOMPARE(clean(true), 0x16);
        QVERIFY2(trace().endsWith(back), qPrintable(trace()));
        QCOMPARE(m_rig.bridge.count(5, 0x57) + m_rig.bridge.count(5, 0x58) + m_rig.bridge.count(5, 0x59),
                 2 * (look - 1));
    }
    init();
    m_job.setPrintStatus(PrintStatusIdle);
    m_rig.bridge.setBytes(5, 0x34, {}); // no vacuum either: it is not waited for
    QCOMPARE(clean(false), 0);
    QVERIFY(trace().endsWith(park + "v600"));
}

void TestCleaning::waitsForTheVacuum()
{
    std::atomic<int> looks{0};
    m_rig.bridge.setHandler(5, 0x34, [&looks](const BoardRequest &request) {
        QByteArray answer = request.data;
        const qint16 pressure = ++looks < 3 ? -449 : -450;
        const qint16 heads[] = {-450, -500, pressure};
        for (int head = 0; head < 3; ++head) {
            answer[2 + 2 * head] = char(heads[head]);
            answer[3 + 2 * head] = char(quint16(heads[head]) >> 8);
        }
        return answer;
    });
    QCOMPARE(clean(false), 0);
    QCOMPARE(m_job.takeMessages(), QStringList({"00000012|气压恢复中(-450,-500,-449)|1|200000",
                                                "00000012|气压恢复中(-450,-500,-449)|1|200000", "||1|400"}));
}

QTEST_MAIN(TestCleaning)
#include "test_cleaning.moc"
