// The machine panel: every command has its control, and what happens in the machine shows.

#include "CommandPanel.h"
#include "FaultRegister.h"
#include "MachinePanel.h"
#include "ManualClock.h"
#include "Site.h"
#include "ViolationList.h"

#include "Bridge.h"

#include <QComboBox>
#include <QJsonArray>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

class TestPanel : public QObject
{
    Q_OBJECT
    struct Rig {
        TestMachine test;
        Bridge bridge{test.machine};
        Site site;
        FaultRegister faults;
        CommandContext context{test.machine, bridge, site, {}, {}, {}, &faults, {}};
        MachinePanel panel{context};
    };
    std::unique_ptr<Rig> m_rig;

    CommandRow *row(const QString &name)
    {
        for (CommandRow *row : m_rig->panel.commandPanel().rows()) {
            if (row->name() == name)
                return row;
        }
        return nullptr;
    }

private slots:
    void init() { m_rig = std::make_unique<Rig>(); }
    void cleanup() { m_rig.reset(); }

    /// The forms of a command, counted by its own text: words that are no plain word, one form for each
    /// alternative.
    void everyCommandHasItsInputs()
    {
        QStringList expected, found;
        for (const Command &command : commands()) {
            for (const QString &form : QString(command.arguments).split(" | ")) {
                const QStringList words = form.split(' ', Qt::SkipEmptyParts);
                const auto fixed = [](const QString &w) {
                    return w == w.toLower() && w.indexOf(QRegExp("[][|.]")) < 0;
                };
                expected << QString("%1 %2")
                                .arg(command.name)
                                .arg(words.size() - std::count_if(words.begin(), words.end(), fixed));
            }
        }
        for (CommandRow *row : m_rig->panel.commandPanel().rows())
            found << QString("%1 %2").arg(row->name()).arg(row->inputs());
        expected.sort();
        found.sort();
        QCOMPARE(found, expected);
    }

    void readsArguments()
    {
        // f(ixed) c(hoice) w(hole) d(ecimal) t(ext), capital: optional
        for (const auto &[text, expected] : {std::pair<const char *, const char *>{"", ""},
                                             {"front|inkbox open|close", "cc"},
                                             {"HEAD structure|support VALUE", "wcw"},
                                             {"drop|late RATE [MS]", "cdW"},
                                             {"plug FOLDER [NAME] | unplug [NAME]", "ftT/fT"},
                                             {"1..4 [on|off]", "wC"}}) {
            QStringList forms;
            for (const CommandForm &form : commandForms(text)) {
                forms << QString();
                for (const CommandField &field : form)
                    forms.last() += field.optional ? "FCWDT"[field.kind] : "fcwdt"[field.kind];
            }
            QCOMPARE(forms.join('/'), QString(expected));
        }
    }

    void worksTheMachine()
    {
        QPushButton *quick = m_rig->panel.findChild<QPushButton *>("inkBoxDoor");
        for (bool closed : {false, true}) {
            quick->click();
            QCOMPARE(m_rig->test.machine.inkDoorClosed, closed);
            QCOMPARE(quick->text().contains("OPEN"), !closed);
        }
        // A fault by its form: chosen, done, and told as switched on until it is switched off.
        QComboBox *speed = row("leveller")->findChild<QComboBox *>();
        speed->setCurrentText("slow");
        row("leveller")->findChild<QPushButton *>()->click();
        QCOMPARE(m_rig->faults.active(), QStringList{"leveller slow"});
        m_rig->panel.run({"frames", "drop", "0.5", "100"});
        m_rig->panel.run({"level", "1", "support", "5000"}); // of the moment: it is not kept
        QCOMPARE(m_rig->faults.active(), (QStringList{"frames drop 0.5 100", "leveller slow"}));
        m_rig->panel.run({"frames", "drop", "0"});
        m_rig->panel.run({"leveller", "normal"});
        QVERIFY(m_rig->faults.active().isEmpty());
        const QJsonObject state = stateOf(m_rig->test.machine, m_rig->bridge);
        QVERIFY(qAbs(state["heads"].toArray()[0].toObject()["support"].toInt() - 5000) < 10);
    }

    void showsViolationsAndAnswers()
    {
        m_rig->panel.show();
        QCOMPARE(m_rig->panel.violationList().rows(), 0);
        m_rig->test.machine.moveX(100);
        QTRY_COMPARE(m_rig->panel.violationList().rows(), m_rig->test.machine.violations().count());
        m_rig->panel.run({"stick", "q", "on"});
        QCOMPARE(m_rig->panel.commandPanel().answer(), QString("stick q on: stick needs: x|y|z on|off"));
        m_rig->panel.findChild<QLineEdit *>("filter")->setText("leveller");
        QVERIFY(row("leveller")->isVisible() && !row("door")->isVisible());
    }
};

QTEST_MAIN(TestPanel)
#include "test_panel.moc"
