// The maintenance plan: what is left of a cycle, and the file of the days.

#include "events/MaintainPlan.h"
#include "tests/support/TestInstall.h"

#include <QFile>
#include <QJsonDocument>
#include <QTest>

class TestMaintainPlan : public QObject
{
    Q_OBJECT
    TestInstall m_install;
    const QString m_file = "config/MaintainPlan.json";

private slots:
    void rest()
    {
        const QDate today(2026, 3, 1);
        const struct {
            int daysAgo, cycle, percent;
            MaintainState state;
        } cases[] = {{0, 7, 100, MaintainState::InTime},
                     {6, 7, 15, MaintainState::InTime},
                     {7, 7, 0, MaintainState::Due},
                     {13, 7, -85, MaintainState::Due},
                     {14, 7, -100, MaintainState::Overdue},
                     {1, 30, 97, MaintainState::InTime},
                     {29, 30, 4, MaintainState::InTime},
                     {-1, 7, 114, MaintainState::InTime},
                     {-365, 15, 2533, MaintainState::InTime},
                     {365, 30, -1116, MaintainState::Overdue},
                     {730000, 7, -10428471, MaintainState::Overdue}};
        for (const auto &row : cases) {
            const int percent = restPercent(today.addDays(-row.daysAgo), today, row.cycle);
            QCOMPARE(percent, row.percent);
            QCOMPARE(int(maintainState(percent)), int(row.state));
        }
        QCOMPARE(restPercent(QDate(), today, 7), 100);
    }

    void file()
    {
        const QString today = QDate::currentDate().toString("yyyy-MM-dd");
        const auto dates = [&] { return QJsonDocument::fromJson(readFile(m_file)).object(); };
        MaintainPlan plan;
        QVERIFY(!plan.load());
        plan.createFile();
        QCOMPARE(dates().size(), 50);
        QCOMPARE(dates().value("49").toString(), today);

        const QByteArray old = "{\"0\": \"2026-02-31\", \"1\": 7, \"3\": \"2001-01-01\"}";
        writeFile(m_file, old);
        plan.createFile(); // not over one that is there
        QCOMPARE(readFile(m_file), old);
        QVERIFY(plan.load());
        for (int row : {0, 1, 2})
            QCOMPARE(plan.restPercent(row), 100);
        QCOMPARE(maintainState(plan.restPercent(3)), MaintainState::Overdue);

        for (const char *damage :
             {"", "{\"3\"",
              static_cast<const char *>(nullptr)}) { // what was read survives a damaged or lost file
            QFile::remove(m_file);
            if (damage)
                writeFile(m_file, damage);
            QVERIFY(!plan.load());
        }
        plan.setDone(11);
        QCOMPARE(dates().value("3").toString(), QString("2001-01-01"));
        QCOMPARE(dates().value("11").toString(), today);
    }
};

QTEST_GUILESS_MAIN(TestMaintainPlan)
#include "test_maintain_plan.moc"
