// The message form: who gets it, what it shows and records, and how its answer comes back.

#include "events/EventHandler.h"
#include "events/OperatorMessage.h"
#include "forms/MsgForm.h"
#include "tests/forms/FormRig.h"
#include "tests/support/LogCapture.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <atomic>

using MessageButtons::close;
using MessageButtons::dismiss;
using MessageButtons::yesNo;
using MessageIcon::critical;
using MessageIcon::information;
using MessageIcon::warning;

/// A page or service with a key of its own.
struct Owner : IMsgForm {
};

class TestMessageForm : public QObject
{
    Q_OBJECT

    FormRig m_rig;
    Owner m_one, m_two;
    QString text(const char *label) { return msgForm()->findChild<QLabel *>(label)->text(); }
    QPushButton *button(const char *name) { return msgForm()->findChild<QPushButton *>(name); }
    QString buttons()
    {
        QStringList shown;
        for (const char *name : {"pushButton_No", "pushButton_Yes", "pushButton_close"})
            if (!button(name)->isHidden())
                shown << button(name)->text();
        return shown.join('|');
    }
    int rows(const QString &part) { return QString::fromUtf8(readFile(logPath("event.csv"))).count(part); }

private slots:
    void initTestCase()
    {
        EventHandler::instance();
        FormRig::showWindow();
    }
    void cleanup() { msgForm()->closeMessageForm(); }

    void belongsToOneKey()
    {
        QVERIFY(m_one.showMessageForm(0x16u, "first", critical, close, ""));
        QVERIFY(msgForm()->isTaken());
        QVERIFY(!m_two.showMessageForm(0x17u, "second", critical, close, ""));
        QVERIFY(!m_two.execMessageForm("question", information, yesNo, "")); // refused reads as No, at once
        QVERIFY(!m_two.showProgress("copy", "text", 1, 2));
        QCOMPARE(text("label_text"), QString("first"));
        QCOMPARE(rows("00000017"), 0);
        QVERIFY(m_one.showMessageForm("changed", warning, close, ""));
        QCOMPARE(text("label_text"), QString("changed"));
        QVERIFY(!m_two.showMessageForm("", 0, dismiss, "")); // nor may another take it down
        QVERIFY(msgForm()->isTaken());
        button("pushButton_close")->click(); // one close frees it, however often it was changed
        QVERIFY(!msgForm()->isTaken());
        QVERIFY(m_two.showMessageForm("mine now", information, close, ""));
        msgForm()->closeMessageForm();
        QVERIFY(m_one.showMessageForm("given key", information, close, "shared"));
        QVERIFY(m_two.showMessageForm("same key", information, close, "shared"));
    }

    void wordsTitleAndRows_data()
    {
        QTest::addColumn<quint32>("id");
        QTest::addColumn<int>("icon");
        QTest::addColumn<QString>("header");
        QTest::addColumn<int>("newRows");
        QTest::addColumn<int>("warnings");
        QTest::newRow("information has no number") << 0xffffff01u << 1 << "提示" << 0 << 0;
        QTest::newRow("warning") << 0x18u << 2 << "警告 (00000018)" << 1 << 0;
        QTest::newRow("error") << 0x19u << 3 << "错误 (00000019)" << 1 << 0;
        QTest::newRow("active event has its row already") << 0xffff07u << 3 << "错误 (00ffff07)" << 0 << 0;
        QTest::newRow("fault") << 0xffffffffu << 3 << "错误 (ffffffff)" << 1 << 1;
        QTest::newRow("other icon keeps the word") << 0x11u << 0 << "错误 (00000011)" << 1 << 0;
    }
    void wordsTitleAndRows()
    {
        QFETCH(quint32, id);
        QFETCH(int, icon);
        QFETCH(int, newRows);
        QFETCH(int, warnings);
        EventHandler::setEvent(0xffff07, "");
        const int before = rows(messageTitle(id));
        LogCapture log;
        QVERIFY(m_one.showMessageForm(id, "why", icon, close, ""));
        QTEST(text("label_title"), "header");
        QCOMPARE(rows(messageTitle(id)) - before, newRows);
        QCOMPARE(log.count(messageTitle(id) + " : why"), warnings);
    }

    void buttonsAndTheirWords_data()
    {
        QTest::addColumn<QString>("info");
        QTest::addColumn<int>("mask");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("shown");
        QTest::newRow("none") << "{text}" << 0 << "{text}"
                              << "";
        QTest::newRow("question") << "a?" << yesNo << "a?"
                                  << "否|是";
        QTest::newRow("one bit is not enough") << "a?" << 0x4000 << "a?"
                                               << "";
        QTest::newRow("close") << "a" << close << "a"
                               << "关闭";
        QTest::newRow("all") << "a" << (close | yesNo) << "a"
                             << "否|是|关闭";
        QTest::newRow("worded") << R"({"text":"which?","Yes":"left","No":"right"})" << yesNo << "which?"
                                << "right|left";
        QTest::newRow("array is no wording") << "[1]" << yesNo << "[1]"
                                             << "否|是";
        QTest::newRow("long word") << QString(200, 'w') << close << QString(200, 'w') << "关闭";
    }
    void buttonsAndTheirWords()
    {
        QFETCH(QString, info);
        QFETCH(int, mask);
        QVERIFY(m_one.showMessageForm(info, warning, mask, ""));
        QTEST(text("label_text"), "text");
        QTEST(buttons(), "shown");
        QApplication::processEvents();
        const QRect frame = msgForm()->findChild<QWidget *>("frame_msg")->geometry();
        QVERIFY(msgForm()->rect().contains(frame)); // a word that is too long for a line widens nothing
    }

    void answers_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<bool>("answer");
        QTest::newRow("yes") << "pushButton_Yes" << true;
        QTest::newRow("no") << "pushButton_No" << false;
        QTest::newRow("close") << "pushButton_close" << false;
        QTest::newRow("from code") << "" << true;
        QTest::newRow("dismissed by its owner") << "dismiss" << true;
    }
    void answers()
    {
        QFETCH(QString, button);
        if (button == "dismiss")
            QTimer::singleShot(0, [&] { QVERIFY(!m_one.showMessageForm("", 0, dismiss, "")); });
        else if (button.isEmpty())
            QTimer::singleShot(0, [&] { m_one.closeMessageForm(); });
        else
            FormRig::answerLater(button);
        QTEST(m_one.execMessageForm("?", warning, yesNo | close, ""), "answer");
        QVERIFY(!msgForm()->isTaken());
    }

    void dismissOnFreeForm()
    {
        QVERIFY(!m_one.showMessageForm("", 0, dismiss, ""));
        QVERIFY(!msgForm()->isTaken());
        QVERIFY(m_two.showMessageForm("free", information, close, ""));
    }

    void nestedQuestionOfOneOwner()
    {
        bool inner = true;
        QTimer::singleShot(0, [&] {
            FormRig::answerLater("pushButton_No");
            inner = m_one.execMessageForm("inner", warning, yesNo, "");
        });
        QVERIFY(!m_one.execMessageForm("outer", warning, yesNo, ""));
        QVERIFY(!inner);
    }

    void coversTheWindow()
    {
        QWidget *window = msgForm()->parentWidget();
        QVERIFY(m_one.showMessageForm("up", information, close, ""));
        for (const QPoint &point : {QPoint(1, 1), QPoint(300, 930), QPoint(599, 1023)})
            QCOMPARE(window->childAt(point), static_cast<QWidget *>(msgForm()));
        msgForm()->closeMessageForm();
        QVERIFY(!msgForm()->isAncestorOf(window->childAt(300, 500)));
    }

    void progress()
    {
        auto *bar = msgForm()->findChild<QProgressBar *>();
        QVERIFY(m_one.showProgress("copy", "from a", 3.9f, 10.7f));
        QCOMPARE(bar->maximum(), 10);
        QCOMPARE(bar->value(), 3);
        QVERIFY(bar->isVisible());
        QCOMPARE(text("label_title"), QString("copy"));
        QCOMPARE(buttons(), QString("关闭"));
        QVERIFY(m_one.showProgress("copy", "from a", 1e12f, 1e12f)); // beyond an integer
        QVERIFY(m_one.showMessageForm("done", information, close, ""));
        QVERIFY(!bar->isVisible());
    }

    void workersWaitForTheAnswer()
    {
        for (const bool yes : {true, false}) {
            QVERIFY(m_one.showMessageForm("?", critical, yesNo, ""));
            std::atomic<int> answer{-1};
            std::unique_ptr<QThread> worker(QThread::create([&] { answer = waitMessageForm(); }));
            worker->start();
            QVERIFY(!waitUntil([&] { return answer != -1; }, 100));
            button(yes ? "pushButton_Yes" : "pushButton_No")->click();
            QTRY_COMPARE(int(answer), yes ? 1 : 0);
            worker->wait();
        }
    }

    void manyWorkersAndMessages()
    {
        std::atomic<int> answers{0};
        std::vector<std::unique_ptr<QThread>> workers;
        for (int i = 0; i < 4; ++i) {
            workers.emplace_back(QThread::create([&] {
                for (int round = 0; round < 200; ++round) {
                    waitMessageForm();
                    ++answers;
                }
            }));
            workers.back()->start();
        }
        const auto done = [&] { return answers == 800; };
        QVERIFY(waitUntil(
            [&] {
                // a worker that reads an answer must not make a message be refused or a close unlock for it
                const bool shown = m_one.showMessageForm("again", warning, close, "");
                const bool taken = msgForm()->isTaken();
                msgForm()->closeMessageForm();
                return !shown || !taken || done();
            },
            20000));
        QVERIFY(done());
        for (const auto &worker : workers)
            worker->wait();
    }
};

FORM_TEST_MAIN(TestMessageForm)
#include "test_message_form.moc"
