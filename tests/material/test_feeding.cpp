#include "tests/material/ClimateRig.h"

#include "events/EventHandler.h"
#include "frame/JsonConfig.h"
#include "links/Usb2Can.h"
#include "material/InkFeeding.h"

#include <QtTest>

#include <memory>
#include <thread>

namespace
{
// The two waxes as the boards know them.
struct Wax {
    InkPath ink;
    int valveCode, nozzleCode, busyByte, demandByte, resultByte;
    quint32 event;
    const char *usage;
    const char *givingUp;
    int firstPosition; ///< of its pair in the rack
};
const Wax waxes[] = {{StructureInk, 0x41, 0x43, 2, 4, 6, 0xffff04, "UsedStructMaterialWeight",
                      "restore  making struct ink into valve", 3},
                     {SupportInk, 0x40, 0x42, 1, 2, 4, 0xffff05, "UsedSupportMaterialWeight",
                      "restore  making sup ink into valve", 1}};

/// The number of the place a feeding request opens.
int placeOf(const BoardRequest &request)
{
    return request.data.indexOf('\1', 1);
}
} // namespace

class TestFeeding : public QObject
{
    Q_OBJECT
    std::unique_ptr<ClimateRig> m_rig;
    QStringList m_messages;
    std::atomic<quint8> m_door{1};
    std::atomic<quint8> m_writeCards{0}; ///< the account's own door: writing cards is proven elsewhere
    std::atomic<int> m_failures{0};      ///< results that the ink board still reports as failed
    std::unique_ptr<BottleAccount> m_bottles;
    std::unique_ptr<InkFeeding> m_feeding;

    quint32 rest(int position) const { return m_bottles->restWeight(quint8(position + 1)); }
    QString places(int code) const
    {
        QString all;
        for (const BoardRequest &request : m_rig->bridge.requests(3, code))
            all += QString::number(placeOf(request));
        return all;
    }
    void demand(const Wax &wax)
    {
        m_rig->bridge.setBytes(3, 0x36, {{wax.demandByte, 1}});
        m_rig->bridge.setHandler(3, 0xFF, [this, &wax](const BoardRequest &request) {
            QByteArray answer = request.data;
            answer[wax.resultByte] = m_failures > 0;
            m_failures = m_failures - 1;
            return answer;
        });
    }

    // So many feeds fail, the next one succeeds.
    void feedThroughFailures(const Wax &wax, int failures, const QString &valves)
    {
        const double used = useInfoConfig()->getValue(wax.usage).toDouble();
        const quint32 before[] = {rest(wax.firstPosition), rest(wax.firstPosition + 1)};
        m_bottles->setBottleInUse(5, 3);
        m_rig->bridge.clearRecord();
        m_rig->log.clear();
        m_messages.clear();
        demand(wax);
        m_failures = failures;
        for (int left = failures; left >= 2; left -= 2) {
            QVERIFY(m_feeding->pass(wax.ink));
            QCOMPARE(EventHandler::eventCount(wax.event), quint32((failures - left + 2) % 8));
        }
        QVERIFY(m_feeding->pass(wax.ink));
        QCOMPARE(places(wax.valveCode), valves);
        QVERIFY(!EventHandler::isEventActive(wax.event));
        const int alarms = failures >= 8;
        QCOMPARE(m_messages.size(), alarms);
        QCOMPARE(m_messages.filter("发生次数: 8").filter(QString::number(wax.event, 16)).size(), alarms);
        QCOMPARE(m_rig->log.count(wax.givingUp), alarms);
        QCOMPARE(m_rig->log.count(" errCnt="), failures);
        QCOMPARE(m_rig->log.count(" errCnt=1\""), 1 + alarms * (failures - 8));
        for (const int valve : {1, 2}) {
            const int feeds = valves.count(QString::number(valve));
            const int charge = valves.endsWith(QString::number(valve)) ? feeds + 64 : feeds;
            QCOMPARE(rest(wax.firstPosition + valve - 1), before[valve - 1] - charge);
        }
        QCOMPARE(useInfoConfig()->getValue(wax.usage).toDouble(), used + 0.065);
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
        InkFeeding::forgetFailures();
        const ServiceMessage show = [this](quint32 id, const QString &text, int icon, int) {
            if (icon == MessageIcon::critical && id != 0)
                m_messages << QString::number(id, 16) + text;
        };
        m_bottles = std::make_unique<BottleAccount>(show, m_writeCards);
        m_feeding = std::make_unique<InkFeeding>(*m_bottles, m_door, show);
        m_door = 1;
        QVERIFY(m_bottles->openPort(5));
        m_rig->setRests({1000, 1000, 1000, 1000});
        m_bottles->updateCard();
        m_rig->log.clear();
        m_messages.clear();
    }

    void failuresInARowChangeTheBottleAndCallTheOperator()
    {
        const std::pair<int, QString> cases[] = {
            {1, "22"}, {2, "221"}, {7, "22112211"}, {8, "221122112"}, {9, "2211221122"}};
        for (const auto &[failures, valves] : cases) {
            for (const Wax &wax : waxes) {
                feedThroughFailures(wax, failures, valves);
                if (QTest::currentTestFailed())
                    return;
            }
        }
    }

    void emptyBottleIsLeftAtOnce()
    {
        for (const Wax &wax : waxes) {
            m_rig->setRests({11, 11, 11, 11});
            m_bottles->updateCard();
            m_rig->bridge.clearRecord();
            demand(wax);
            m_failures = 2;
            QVERIFY(m_feeding->pass(wax.ink));
            QCOMPARE(places(wax.valveCode), QString("21"));
            QVERIFY(m_feeding->pass(wax.ink));
            QCOMPARE(m_rig->bridge.count(3, 0x36), 1); // both are empty: nothing is asked for any more
            InkFeeding::forgetFailures();
        }
    }

    void nothingIsFedWhileSomethingIsInTheWay()
    {
        const auto asked = [this] {
            m_rig->bridge.clearRecord();
            for (const Wax &wax : waxes)
                m_feeding->pass(wax.ink);
            return m_rig->bridge.count();
        };
        QCOMPARE(asked(), 2);
        m_door = 0;
        QCOMPARE(asked(), 0);
        m_door = 1;
        for (const quint32 zone : {0x33101u, 0xffff02u, 0x33105u}) { // the last one holds up nothing
            EventHandler::setEvent(zone, QString());
            QCOMPARE(asked(), zone == 0x33105u ? 2 : 0);
            EventHandler::clearEvent(zone);
        }
        m_rig->setRests({0, 0, 0, 70});
        m_bottles->updateCard();
        QCOMPARE(asked(), 1); // structure alone
    }

    void unreachableBoardIsAskedOnceAPass()
    {
        usb2Can()->SetFilter(3, true);
        for (int i = 0; i < 3; ++i)
            QVERIFY(m_feeding->pass(StructureInk)); // rests before the next
        QCOMPARE(m_rig->log.count(QString()), 6);   // the refusal, and request with answer
        usb2Can()->SetFilter(3, false);
        m_rig->bridge.fail(FakeBridge::Silent, 3, 0x36, 1);
        QVERIFY(!m_feeding->pass(StructureInk)); // has waited long enough
        demand(waxes[0]);
        m_rig->bridge.fail(FakeBridge::Silent, 3, 0xFF, 1);
        m_failures = 1;
        QVERIFY(m_feeding->pass(StructureInk)); // no outcome counts as fed
        QCOMPARE(rest(4), 935u);
    }

    // The board vanishes and comes back, and the door opens, while wax runs.
    void longFeedOutlivesFilterAndDoor()
    {
        std::atomic<int> busy{0};
        for (const Wax &wax : waxes) {
            demand(wax);
            m_failures = 0;
            m_rig->bridge.setHandler(3, 0x50, [&](const BoardRequest &request) {
                QByteArray answer = request.data;
                answer[wax.busyByte] = char(busy);
                return answer;
            });
            m_rig->bridge.setHandler(3, wax.valveCode, [&](const BoardRequest &request) {
                busy = 1;
                return request.data;
            });
            m_rig->bridge.clearRecord();
            std::atomic<bool> done{false};
            std::thread service([&] { done = m_feeding->pass(wax.ink); });
            const bool started = waitUntil([&] { return m_rig->bridge.count(3, 0x50) >= 3; });
            usb2Can()->SetFilter(3, true);
            m_door = 0;
            busy = 0;
            m_rig->log.clear();
            const bool held = waitUntil([&] { return m_rig->log.count("filter id=3") >= 2; }) && !done;
            usb2Can()->SetFilter(3, false);
            service.join();
            QVERIFY(started && held && done);
            QCOMPARE(rest(wax.firstPosition + 1), 935u);
            m_door = 1;
        }
    }

    void firstHeadBelowFullIsFed()
    {
        struct Case {
            std::array<int, 6> levels; // support and structure of each head
            const char *without;
            const char *fed[2]; // structure, support
        };
        const Case cases[] = {{{100, 100, 100, 100, 100, 100}, "", {"", ""}},
                              {{500, 500, 500, 500, 500, 500}, "", {"", ""}},
                              {{101, 101, 101, 101, 101, 101}, "", {"1", "1"}},
                              {{500, 100, 499, 600, 300, 499}, "", {"3", "2"}},
                              {{500, 500, 300, 300, 300, 300}, "Nozzle2_3", {"3", "3"}},
                              {{500, 500, 300, 300, 300, 300}, "Nozzle2_1", {"2", "3"}}};
        for (const Case &row : cases) {
            QJsonObject full;
            for (int tank = 0; tank < InkLevels::tanks; ++tank) {
                m_rig->hib->levels[tank] = row.levels[size_t(tank)];
                full.insert(InkLevels::key(tank), 500);
            }
            full.remove(row.without);
            inkLevels().setFull(full);
            m_rig->bridge.clearRecord();
            m_rig->log.clear();
            for (const Wax &wax : waxes) {
                QVERIFY(m_feeding->pass(wax.ink));
                QCOMPARE(places(wax.nozzleCode), QString(row.fed[&wax - waxes]));
            }
            QCOMPARE(m_rig->log.count("not found hd full value"), qstrcmp(row.without, "Nozzle2_3") ? 0 : 2);
        }
    }
};

QTEST_GUILESS_MAIN(TestFeeding)
#include "test_feeding.moc"
