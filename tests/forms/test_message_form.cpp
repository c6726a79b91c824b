// The message form: who gets it, what it shows and records, and how its answer comes back.

#include "events/EventHandler.h"
#include "events/OperatorMessage.h"
#include "forms/MsgForm.h"
#include "tests/forms/FormRig.h"

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

/// A page or service with a key of its own.
struct Owner : IMsgForm {
};

class TestMessageForm : public QObject
{
    Q_OBJECT

    FormRig m_rig;
    Owner m_one, m_two;
    QString buttons()
    {
        QStringList shown;
        for (const char *name : {"pushButton_No", "pushButton_Yes", "pushButton_close"})
            if (const auto *button = FormRig::find<QPushButton>(name); button->isVisible())
                shown << button->text();
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
        QVERIFY(m_one.showMessageForm(0x16u, "first", 3, close, ""));
        QVERIFY(!m_two.showMessageForm(0x17u, "second", 3, close, ""));
        QVERIFY(!m_two.execMessageForm("question", 1, yesNo, "")); // refused reads as No, at once
        QVERIFY(!m_two.showProgress("copy", "text", 1, 2));
        QVERIFY(!m_two.showMessageForm("", 0, dismiss, "")); // nor may another take it down
        QCOMPARE(FormRig::message(), QString("first"));
        QCOMPARE(rows("00000017"), 0);
        QVERIFY(m_one.showMessageForm("changed", 2, close, ""));
        QCOMPARE(FormRig::message(), QString("changed"));
        QWidget *window = msgForm()->parentWidget();
        QCOMPARE(window->childAt(300, 930), static_cast<QWidget *>(msgForm())); // nothing under it is touched
        FormRig::press("pushButton_close"); // one close frees it, however often it was changed
        QVERIFY(!msgForm()->isTaken());
        QVERIFY(!msgForm()->isAncestorOf(window->childAt(300, 500)));
        QVERIFY(!m_two.showMessageForm("", 0, dismiss, ""));
        QVERIFY(m_one.showMessageForm("given key", 1, close, "shared"));
        QVERIFY(m_two.showMessageForm("same key", 1, close, "shared"));
    }

    void wordsTitleAndRows_data()
    {
        QTest::addColumn<quint32>("id");
        QTest::addColumn<int>("icon");
        QTest::addColumn<QString>("header");
        QTest::addColumn<int>("newRows");
        QTest::newRow("information has no number") << 0xffffff01u << 1 << "提示" << 0;
        QTest::newRow("warning") << 0x18u << 2 << "警告 (00000018)" << 1;
        QTest::newRow("active event has its row already") << 0xffff07u << 3 << "错误 (00ffff07)" << 0;
        QTest::newRow("fault") << 0xffffffffu << 3 << "错误 (ffffffff)" << 1;
        QTest::newRow("other icon keeps the word") << 0x11u << 0 << "错误 (00000011)" << 1;
    }
    void wordsTitleAndRows()
    {
        QFETCH(quint32, id);
        QFETCH(int, icon);
        QFETCH(int, newRows);
        EventHandler::setEvent(0xffff07, "");
        const int before = rows(messageTitle(id));
        LogCapture log;
        QVERIFY(m_one.showMessageForm(id, "why", icon, close, ""));
        QTEST(FormRig::text("label_title"), "header");
        QCOMPARE(rows(messageTitle(id)) - before, newRows);
        QCOMPARE(log.count(messageTitle(id) + " : why"), id == 0xffffffffu ? 1 : 0);
    }

    void buttonsAndTheirWords_data()
    {
        QTest::addColumn<QString>("info");
        QTest::addColumn<int>("mask");
        QTest::addColumn<QString>("shown");
        QTest::newRow("none") << "a" << 0 << "";
        QTest::newRow("one bit is not enough") << "a?" << 0x4000 << "";
        QTest::newRow("all") << "a" << (close | yesNo) << "否|是|关闭";
        QTest::newRow("worded") << R"({"text":"which?","Yes":"left","No":"right"})" << yesNo << "right|left";
        QTest::newRow("array is no wording") << "[1]" << yesNo << "否|是";
        QTest::newRow("long word") << QString(200, 'w') << close << "关闭";
    }
    void buttonsAndTheirWords()
    {
        QFETCH(QString, info);
        QFETCH(int, mask);
        QVERIFY(m_one.showMessageForm(info, 2, mask, ""));
        QTEST(buttons(), "shown");
        QCOMPARE(FormRig::message(), info.startsWith('{') ? QString("which?") : info);
        QApplication::processEvents();
        QVERIFY(msgForm()->rect().contains(FormRig::find<QWidget>("frame_msg")->geometry()));
    }

    void answers()
    {
        for (const char *button : {"pushButton_Yes", "pushButton_No", "pushButton_close"}) {
            FormRig::answerLater(button);
            QCOMPARE(m_one.execMessageForm("?", 2, yesNo | close, ""), QString(button) == "pushButton_Yes");
        }
        QTimer::singleShot(0, [&] { m_one.closeMessageForm(); });
        QVERIFY(m_one.execMessageForm("?", 2, 0, ""));
        QTimer::singleShot(0, [&] { m_one.showMessageForm("", 0, dismiss, ""); });
        QVERIFY(m_one.execMessageForm("?", 2, 0, ""));
        bool inner = true; // the owner asks again while its first question is open: one answer for both
        QTimer::singleShot(0, [&] {
            FormRig::answerLater("pushButton_No");
            inner = m_one.execMessageForm("inner", 2, yesNo, "");
        });
        QVERIFY(!m_one.execMessageForm("outer", 2, yesNo, ""));
        QVERIFY(!inner);
    }

    void progress()
    {
        const auto *bar = msgForm()->findChild<QProgressBar *>();
        QVERIFY(m_one.showProgress("copy", "from a", 3.9f, 10.7f));
        QCOMPARE(bar->maximum() * 100 + bar->value(), 1003);
        QCOMPARE(FormRig::text("label_title") + buttons(), QString("copy关闭"));
        QVERIFY(m_one.showProgress("copy", "from a", 1e12f, 1e12f)); // beyond an integer
        QVERIFY(m_one.showMessageForm("done", 1, close, ""));
        QVERIFY(!bar->isVisible());
    }

    void workersWaitForTheAnswer()
    {
        for (const bool yes : {true, false}) {
            QVERIFY(m_one.showMessageForm("?", 3, yesNo, ""));
            std::atomic<int> answer{-1};
            std::unique_ptr<QThread> worker(QThread::create([&] { answer = waitMessageForm(); }));
            worker->start();
            QVERIFY(!waitUntil([&] { return answer != -1; }, 100));
            FormRig::press(yes ? "pushButton_Yes" : "pushButton_No");
            QTRY_COMPARE(int(answer), yes ? 1 : 0);
            worker->wait();
        }
    }

    void workersThatReadRefuseNobody()
    {
        std::atomic<bool> stop{false};
        std::atomic<int> answers{0};
        const auto read = [&] {
            for (; !stop; ++answers)
                waitMessageForm();
        };
        std::unique_ptr<QThread> one(QThread::create(read)), two(QThread::create(read));
        one->start();
        two->start();
        for (int i = 0; i < 100 || answers < 100; ++i) {
            QVERIFY(m_one.showMessageForm("again", 2, close, ""));
            QVERIFY(msgForm()->isTaken());
            msgForm()->closeMessageForm();
            QApplication::processEvents();
        }
        stop = true;
        QVERIFY(one->wait() && two->wait());
    }
};

FORM_TEST_MAIN(TestMessageForm)
#include "test_message_form.moc"
