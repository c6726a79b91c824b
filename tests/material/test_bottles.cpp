#include "tests/material/ClimateRig.h"

#include "events/EventHandler.h"
#include "material/BottleAccount.h"

#include <QtTest>

#include <cstdio>
#include <memory>
#include <thread>

class TestBottles : public QObject
{
    Q_OBJECT
    std::unique_ptr<ClimateRig> m_rig;
    std::unique_ptr<BottleAccount> m_bottles;
    std::atomic<quint8> m_door{1};
    QStringList m_messages; // "id|text|icon|buttons", behind them how many bottles were known by then

    void mendBottles()
    {
        m_rig->cards.withRack([](BottleRack &rack) { rack = BottleRack(); });
    }
    QStringList takeMessages() { return std::exchange(m_messages, QStringList()); }
    QString rests() const
    {
        QStringList all;
        for (const CardInfo &info : m_bottles->cards().cards)
            all << QString::number(info.rest_weight);
        return all.mid(2).join(' ');
    }
    void load(const std::array<quint32, 4> &grams)
    {
        m_rig->setRests(grams);
        m_bottles->updateCard();
        m_rig->log.clear();
        m_messages.clear();
    }

private slots:
    void initTestCase()
    {
        m_rig = std::make_unique<ClimateRig>();
        EventHandler::instance();
        m_bottles = std::make_unique<BottleAccount>(
            [this](quint32 id, const QString &text, int icon, int btn) {
                // The pages' question is answered also while a card is read.
                int known = 0;
                for (const CardInfo &info : m_bottles->cards().cards)
                    known += info.weight > 0;
                m_messages
                    << QString("%1|%2|%3|%4|%5").arg(id).arg(text).arg(icon).arg(btn, 0, 16).arg(known);
            },
            m_door);
        QVERIFY(m_bottles->openPort(5));
    }
    void cleanupTestCase()
    {
        QCOMPARE(m_rig->cards.violations(), QStringList());
        m_bottles.reset();
        m_rig.reset();
    }
    void init()
    {
        mendBottles();
        m_door = 1;
        m_bottles->setBottleInUse(5, 3);
    }

    void cardsAreReadOneByOne()
    {
        load({1, 1, 1, 1});
        m_rig->setRests({100, 200, 300, 4000});
        std::atomic<bool> ends{false};
        std::thread page([&] { // reads along
            for (; !ends; std::this_thread::yield())
                m_bottles->cards();
        });
        m_bottles->updateCard();
        ends = true;
        page.join();
        QStringList expected;
        for (int position = 1; position <= 4; ++position)
            expected << QString("3|更新第%1个墨瓶|1|0|%2").arg(position).arg(position - 1);
        QCOMPARE(takeMessages(), expected << "0||3|400|4");
        QCOMPARE(rests(), QString("100 200 300 4000"));
        QCOMPARE(m_rig->log.count("[func: readCard line:"), 1);
        for (const char *rest : {"card[1]=", " 100/3600  card[2]=", " 200/3600  card[3]=", " 4000/3600  \""})
            QCOMPARE(m_rig->log.count(rest), 1);
    }

    void chargeOfAFeed()
    {
        struct Row {
            quint32 rest, afterGood, afterFailed;
        };
        const std::vector<Row> rows = {{0, 0, 0},   {1, 0, 0},          {2, 1, 0},          {10, 9, 0},
                                       {11, 10, 0}, {12, 10, 11},       {64, 10, 63},       {65, 0, 64},
                                       {66, 1, 65}, {4600, 4535, 4599}, {4601, 4536, 4600}, {4602, 4537, 0}};
        std::puts("feed   | rest | memory | card"); // not by the log, which the rig takes
        for (const bool fed : {true, false}) {
            for (size_t i = 0; i < rows.size(); i += 4) {
                load({rows[i].rest, rows[i + 1].rest, rows[i + 2].rest, rows[i + 3].rest});
                for (size_t k = 0; k < 4; ++k) {
                    const Row &row = rows[i + k];
                    const int position = int(k) + 1;
                    const quint8 slot = quint8(position + 1);
                    m_bottles->handleRestWeight(slot, fed);
                    const quint32 memory = m_bottles->restWeight(slot), card = m_rig->cardRest(position);
                    std::printf("%-6s | %4u | %6u | %4u\n", fed ? "good" : "failed", row.rest, memory, card);
                    QCOMPARE(memory, fed ? row.afterGood : row.afterFailed);
                    QCOMPARE(card, memory);
                    QCOMPARE(
                        m_rig->log.count(QString("]write num=%1,weight=%2 i=1\"").arg(position).arg(memory)),
                        1);
                }
            }
        }
        QCOMPARE(restAfterFeed(0xFFFFFFFF, true), 0xFFFFFFFFu - 65);
        QCOMPARE(restAfterFeed(0xFFFFFFFF, false), 0u);
        QCOMPARE(takeMessages(), QStringList());
    }

    void cardThatIsNotWritten()
    {
        struct Row {
            CardFault fault;
            int refusals;
            bool doorClosed;
            const char *log;
            quint32 card;
        };
        const Row rows[] = {{CardFault::WriteFail, 9, true, "]write num=3,weight=935 i=10\"", 935},
                            {CardFault::WriteFail, 10, true, "]not write num=3,weight=935 i=10\"", 1000},
                            {CardFault::None, 0, false, "]write num=3,weight=935 i=0\"", 1000},
                            {CardFault::PullOnWrite, 0, true, "]not write num=3,weight=935 i=10\"", 1000}};
        for (const Row &row : rows) {
            load({1000, 1000, 1000, 1000});
            m_rig->cards.withRack([&](BottleRack &rack) { rack.setFault(3, row.fault, row.refusals); });
            m_door = row.doorClosed;
            m_bottles->handleRestWeight(4, true);
            QCOMPARE(rests(), QString("1000 1000 935 1000"));
            QCOMPARE(m_rig->cardRest(3), row.card);
            QCOMPARE(m_rig->log.count(row.log), 1);
            const bool alarm = QByteArray(row.log).startsWith("]not");
            QCOMPARE(takeMessages(), alarm ? QStringList("8|卡片写入失败3|3|200000|4") : QStringList());
            m_rig->cards.withRack([](BottleRack &rack) { rack.setFault(3, CardFault::None), rack.put(3); });
            m_door = 1;
            m_bottles->updateCard(); // the card's figure wins
            QCOMPARE(rests(), QString("1000 1000 %1 1000").arg(row.card));
        }
        for (const quint8 none : {0, 1, 6, 255})
            m_bottles->handleRestWeight(none, true);
        QCOMPARE(m_rig->log.count("no bottle "), 4);
    }

    void faultOfACard()
    {
        m_rig->setRests({10, 20, 30, 40});
        for (int position = 1; position <= 4; ++position) {
            for (const CardFault fault :
                 {CardFault::Missing, CardFault::WrongKey, CardFault::Unreadable, CardFault::WrongPlace}) {
                takeMessages();
                m_rig->cards.withRack([&](BottleRack &rack) { rack.setFault(position, fault); });
                m_bottles->updateCard();
                QStringList expected;
                for (int other = 1; other <= 4; ++other) {
                    const bool read = fault == CardFault::WrongPlace ? other < position : other != position;
                    expected << QString::number(read ? 10 * other : 0);
                }
                QCOMPARE(rests(), expected.join(' '));
                const QStringList told = takeMessages();
                if (fault == CardFault::WrongPlace) {
                    QCOMPARE(told.size(), position + 1);
                    QCOMPARE(told.last(),
                             QString("4|墨瓶%1放错位置|3|200000|%2").arg(position).arg(position - 1));
                } else {
                    QCOMPARE(told.size(), 5);
                }
                m_rig->cards.withRack([&](BottleRack &rack) { rack.setFault(position, CardFault::None); });
            }
        }
        m_rig->cards.withRack(
            [](BottleRack &rack) { rack.at(3).card.type.clear(); }); // a blank one is nobody's
        m_bottles->updateCard();
        QCOMPARE(rests(), QString("10 20 30 40"));
    }

    void emptyBottleInUseIsLeftForAFitOne()
    {
        struct Row {
            std::array<quint32, 4> grams;
            int withoutWeight; ///< position whose card says nothing of a full bottle
            int strUse, supUse, strThen, supThen;
        };
        const Row rows[] = {{{9, 0, 9, 0}, 0, 5, 3, 4, 2}, {{0, 9, 0, 9}, 0, 4, 2, 5, 3},
                            {{0, 0, 0, 0}, 0, 4, 3, 4, 3}, {{9, 9, 9, 9}, 0, 5, 2, 5, 2},
                            {{9, 0, 9, 0}, 1, 5, 3, 4, 3}, {{9, 0, 9, 0}, 3, 5, 3, 5, 2}};
        for (const Row &row : rows) {
            mendBottles();
            if (row.withoutWeight)
                m_rig->cards.withRack([&](BottleRack &rack) { rack.at(row.withoutWeight).card.weight = 0; });
            m_bottles->setBottleInUse(quint8(row.strUse), quint8(row.supUse));
            load(row.grams);
            QCOMPARE(int(m_bottles->cards().strUse), row.strThen);
            QCOMPARE(int(m_bottles->cards().supUse), row.supThen);
        }
        for (const auto &[str, sup] : {std::pair<int, int>{3, 2}, {6, 3}, {5, 4}, {4, 0}})
            m_bottles->setBottleInUse(quint8(str), quint8(sup));
        QCOMPARE(m_rig->log.count("no such bottles"), 4);
        QCOMPARE(int(m_bottles->inUse(StructureInk)), 5);
        mendBottles();
        load({9, 8, 7, 6});
        m_bottles->switchStrBottle();
        QCOMPARE(int(m_bottles->inUse(StructureInk)), 4);
        QCOMPARE(m_rig->log.count("m_strUse = 5,m_cards[5].rest_weight = 6,m_cards[4].rest_weight =7"), 1);
    }
};

QTEST_GUILESS_MAIN(TestBottles)
#include "test_bottles.moc"
