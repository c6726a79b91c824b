// The on-screen keyboard, touched as on the machine: what its keys type, when it goes, where the page stands.

#include "forms/KeyboardRoom.h"
#include "keyboard/ChineseWidget.h"
#include "keyboard/KeyButton.h"
#include "keyboard/Keyboard.h"
#include "support/TestInstall.h"

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QTextEdit>
#include <QTouchDevice>
#include <memory>

using Tactil::Keyboard;
using Tactil::KeyButton;

namespace
{
/// A window with one page of edit boxes and the keyboard under it.
struct Desk {
    Desk()
    {
        window.resize(600, 1024);
        pages->setGeometry(0, 72, 600, 770);
        page->resize(600, 770);
        upper->setGeometry(16, 60, 400, 60);
        lower->setGeometry(16, 600, 400, 60);
        text->setGeometry(16, 680, 400, 80);
        number->setGeometry(430, 60, 150, 60);
        button->setGeometry(430, 600, 150, 60);
        keyboard->move(0, 1024 - keyboard->height());
        keyboard->lower();
        new KeyboardRoom(pages, keyboard);
        window.show();
        window.activateWindow();
        isActive = QTest::qWaitForWindowActive(&window);
    }
    void touch(QWidget *widget)
    {
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, middle(widget));
        QCoreApplication::processEvents();
    }
    QPoint middle(const QWidget *widget) const { return widget->mapTo(&window, widget->rect().center()); }
    void edit(QWidget *box)
    {
        box->setFocus();
        keyboard->raise();
        keyboard->edit(box);
    }
    KeyButton *key(const QString &name) const
    {
        for (KeyButton *button : keyboard->findChildren<KeyButton *>("key_" + name))
            if (button->isVisible())
                return button;
        return nullptr;
    }
    /// Touches keys, each a letter or a name.
    void type(const QString &keys)
    {
        for (const QString &name : keys.split(' '))
            if (KeyButton *found = key(name))
                touch(found);
            else
                QFAIL(qPrintable("no key " + name));
    }
    QStringList words() const
    {
        QStringList list;
        for (const KeyButton *word : keyboard->findChildren<KeyButton *>("key_word"))
            if (word->isVisible())
                list << word->text();
        return list;
    }
    void chooseWord(const QString &word)
    {
        for (KeyButton *button : keyboard->findChildren<KeyButton *>("key_word"))
            if (button->isVisible() && button->text() == word)
                return touch(button);
        QFAIL(qPrintable(word + " is not among " + words().join(' ')));
    }

    bool isActive = false;
    QWidget window;
    QWidget *pages = new QWidget(&window), *page = new QWidget(pages);
    QLineEdit *upper = new QLineEdit(page);
    QSpinBox *number = new QSpinBox(page);
    QLineEdit *lower = new QLineEdit(page);
    QTextEdit *text = new QTextEdit(page);
    QPushButton *button = new QPushButton(page);
    Keyboard *keyboard = new Keyboard(&window);
};
} // namespace

class TestKeyboard : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestInstall> m_install;
    std::unique_ptr<Desk> m_desk;

private slots:
    void init()
    {
        m_install = std::make_unique<TestInstall>();
        m_desk = std::make_unique<Desk>();
        QVERIFY(m_desk->isActive);
    }
    void cleanup()
    {
        m_desk.reset();
        m_install.reset();
    }

    void keysType_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("typed");
        QTest::newRow("letters and row of signs") << "a @ b . 1 space c"
                                                  << "a@b.1 c";
        QTest::newRow("shift holds for one letter") << "shift a b"
                                                    << "Ab";
        QTest::newRow("two quick taps are caps") << "shift shift a b shift c"
                                                 << "ABc";
        QTest::newRow("arrows and backspace") << "a b left c backspace right d"
                                              << "abd";
        QTest::newRow("signs, back to letters") << "symbols & £ moreSymbols ½ letters a"
                                                << "&£½a";
        QTest::newRow("Turkish capitals") << "accents ı shift ı İ shift ş"
                                          << "ıIİŞ";
    }
    void keysType()
    {
        QFETCH(QString, keys);
        QFETCH(QString, typed);
        m_desk->edit(m_desk->upper);
        m_desk->type(keys);
        QCOMPARE(m_desk->upper->text(), typed);
        QVERIFY(m_desk->upper->hasFocus());
    }

    void repeatsWhileHeld()
    {
        m_desk->edit(m_desk->upper);
        const QPoint key = m_desk->middle(m_desk->key("a"));
        QWindow *window = m_desk->window.windowHandle();
        QTest::mousePress(window, Qt::LeftButton, {}, key);
        QCOMPARE(m_desk->upper->text(), QString("a")); // at once
        QTRY_VERIFY(m_desk->upper->text().size() >= 4);
        QTest::mouseMove(window, key + QPoint(0, -150)); // the finger slips off
        const int typed = m_desk->upper->text().size();
        QTest::qWait(3 * KeyButton::repeatPeriodMs);
        QCOMPARE(m_desk->upper->text().size(), typed);
        QTest::mouseRelease(window, Qt::LeftButton, {}, key);

        QTest::mousePress(window, Qt::LeftButton, {}, m_desk->middle(m_desk->key("shift")));
        QTRY_VERIFY(m_desk->keyboard->isUpperCase());
        QTest::qWait(KeyButton::repeatDelayMs + 100); // held: capitals stay
        QTest::mouseRelease(window, Qt::LeftButton, {}, m_desk->middle(m_desk->key("shift")));
        m_desk->upper->clear();
        m_desk->type("a b");
        QCOMPARE(m_desk->upper->text(), QString("AB"));

        m_desk->upper->setMaxLength(60);
        QTest::mousePress(window, Qt::LeftButton, {}, m_desk->middle(m_desk->key("b")));
        m_desk->upper->setEnabled(false); // goes away under the finger
        QVERIFY(!m_desk->keyboard->isUp());
        QTest::qWait(KeyButton::repeatDelayMs + 2 * KeyButton::repeatPeriodMs);
        QCOMPARE(m_desk->upper->text(), QString("ABB"));
        QTest::mouseRelease(window, Qt::LeftButton, {}, key);
    }

    void twoFingersOverlap()
    {
        m_desk->edit(m_desk->upper);
        QTouchDevice *screen = QTest::createTouchDevice();
        QWindow *window = m_desk->window.windowHandle();
        const QPoint a = m_desk->middle(m_desk->key("a")), b = m_desk->middle(m_desk->key("b"));
        QTest::touchEvent(window, screen).press(0, a, window);
        QTest::touchEvent(window, screen).stationary(0).press(1, b, window);
        QTest::touchEvent(window, screen).release(0, a, window).stationary(1);
        QTest::touchEvent(window, screen).release(1, b, window);
        QCOMPARE(m_desk->upper->text(), QString("ab"));
        QVERIFY(!m_desk->key("a")->isDown() && !m_desk->key("b")->isDown());
    }

    void pageFollowsBox()
    {
        m_desk->edit(m_desk->number);
        QCOMPARE(m_desk->keyboard->page(), Tactil::KeyPage::Numbers);
        m_desk->number->selectAll();
        m_desk->type("backspace 4 2");
        QCOMPARE(m_desk->number->value(), 42);
        m_desk->upper->setReadOnly(true);
        QVERIFY(!Tactil::EditTarget::isEditBox(m_desk->upper));
        m_desk->upper->setReadOnly(false);
        m_desk->upper->setEchoMode(QLineEdit::Password);
        m_desk->touch(m_desk->upper);
        QCOMPARE(m_desk->keyboard->page(), Tactil::KeyPage::Letters);
        QVERIFY(!m_desk->key("language")->isEnabled());
        m_desk->upper->setEchoMode(QLineEdit::Normal);
        m_desk->edit(m_desk->lower);
        m_desk->type("language z h");
        QVERIFY(m_desk->keyboard->isComposing());
        m_desk->lower->setEchoMode(QLineEdit::Password); // begins to hide its text meanwhile
        m_desk->type("a");
        QVERIFY(!m_desk->keyboard->isComposing());
        QCOMPARE(m_desk->lower->text(), QString("a"));
    }

    void enterGoesOn()
    {
        m_desk->edit(m_desk->lower);
        m_desk->type("a enter");
        QVERIFY(m_desk->text->hasFocus());
        m_desk->type("b enter c");
        QCOMPARE(m_desk->text->toPlainText(), QString("b\nc"));
        m_desk->text->setEnabled(false);
        m_desk->edit(m_desk->lower);
        m_desk->type("enter"); // the last one
        QVERIFY(!m_desk->keyboard->isUp());
        m_desk->edit(m_desk->lower);
        m_desk->type("hide");
        QVERIFY(!m_desk->keyboard->isUp());
    }

    void goesWhenItsBoxGoes()
    {
        const auto isGone = [this](const std::function<void()> &happens) {
            m_desk->edit(m_desk->lower);
            m_desk->type("language z h language");
            happens();
            return !m_desk->keyboard->isUp() && !m_desk->keyboard->isComposing() && m_desk->page->y() == 0;
        };
        QVERIFY(isGone([this] { m_desk->button->setFocus(); }));
        QVERIFY(isGone([this] { m_desk->lower->clearFocus(); }));
        for (QWidget *hidden : {m_desk->page, static_cast<QWidget *>(m_desk->lower)}) {
            QVERIFY(isGone([=] { hidden->hide(); }));
            hidden->show();
        }
        // typing itself ends the box
        connect(m_desk->lower, &QLineEdit::textChanged, m_desk->lower, &QObject::deleteLater);
        QVERIFY(isGone([this] {
            m_desk->type("x");
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }));
        m_desk->edit(m_desk->upper);
        m_desk->type("x");
        QCOMPARE(m_desk->upper->text(), QString("x"));
    }

    void pageMakesRoom()
    {
        m_desk->edit(m_desk->upper);
        QCOMPARE(m_desk->page->y(), 0); // in sight anyway
        for (QWidget *box : {static_cast<QWidget *>(m_desk->lower), static_cast<QWidget *>(m_desk->text)}) {
            m_desk->edit(box);
            const int bottom = box->mapTo(&m_desk->window, QPoint(0, box->height())).y();
            QVERIFY(m_desk->page->y() < 0 && bottom <= m_desk->keyboard->y());
        }
        m_desk->edit(m_desk->upper);
        m_desk->text->setGeometry(16, 120, 400, 640); // taller than the room: its beginning stays in sight
        m_desk->edit(m_desk->text);
        QVERIFY(m_desk->page->y() < 0 && m_desk->page->y() + m_desk->text->y() >= 0);
        // a button beside the box gets its whole touch before the page goes back
        m_desk->edit(m_desk->lower);
        QSignalSpy clicked(m_desk->button, &QPushButton::clicked);
        m_desk->touch(m_desk->button);
        QCOMPARE(clicked.count(), 1);
        QVERIFY(!m_desk->keyboard->isUp());
        QTRY_COMPARE(m_desk->page->y(), 0);
    }

    void pinyin()
    {
        m_desk->edit(m_desk->upper);
        m_desk->type("language z h i c h e n g");
        QCOMPARE(m_desk->keyboard->findChild<QLabel *>("label_preedit")->text(), QString("zhi cheng"));
        QVERIFY(m_desk->words().contains("支撑"));
        QCOMPARE(m_desk->upper->text(), QString());
        const QStringList first = m_desk->words();
        QVERIFY(!m_desk->key("previousWords")->isEnabled());
        m_desk->type("nextWords");
        QVERIFY(m_desk->words() != first && !m_desk->words().isEmpty());
        m_desk->type("previousWords");
        QCOMPARE(m_desk->words(), first);
        m_desk->type("c a i l i a o");
        m_desk->chooseWord("支撑"); // a part: the rest goes on
        m_desk->type("backspace");  // the choice is taken back
        m_desk->chooseWord("支撑");
        QCOMPARE(m_desk->keyboard->findChild<QLabel *>("label_preedit")->text(), QString("支撑cai liao"));
        m_desk->chooseWord("材料");
        QCOMPARE(m_desk->upper->text(), QString("支撑材料"));
        m_desk->type("l backspace l a n enter 。 d a space");
        QVERIFY(m_desk->upper->text().startsWith("支撑材料lan。"));
        QCOMPARE(m_desk->upper->text().size(), 9);
    }

    void pinyinTakesEverything()
    {
        QVERIFY(!QFile::exists("config/pinyin_user.dat"));
        Tactil::PinyinEngine engine;
        const auto words = [&](const QByteArray &letters) {
            engine.clear();
            for (const char letter : letters)
                engine.add(letter);
            QStringList list;
            for (int i = 0; i < qMin(6, engine.count()); ++i)
                list << engine.candidate(i);
            return list;
        };
        QVERIFY(engine.open());
        using Word = std::pair<const char *, const char *>;
        for (const auto &word : {Word("mozhan", "墨站"), Word("guadao", "刮刀"), Word("yaguan", "牙冠"),
                                 Word("feiliaohe", "废料盒")})
            QVERIFY2(words(word.first).contains(word.second), qPrintable(words(word.first).join(' ')));
        QVERIFY(QFileInfo("config/pinyin_user.dat").size() > 0);
        // what ends the decoder where nothing holds it back: one held key, a long line, taking back
        for (const QByteArray &letters :
             {QByteArray(60, 'z'), QByteArray(60, 'a'), QByteArray("xianxian'").repeated(9),
              QByteArray("'ivu"), QByteArray("shuanganacailchu"), QByteArray("woqnchuangerz")}) {
            words(letters);
            for (int turn = 0; turn < 40 && !engine.isEmpty(); ++turn)
                turn % 3 == 0 && engine.count() > 7 ? void(engine.choose(turn % 8)) : engine.backspace();
        }
        engine.clear();
        QDir().mkpath("keyboard");
        writeFile("keyboard/dict_pinyin.dat", "cut"); // not taken; the system's is
        QVERIFY(Tactil::PinyinEngine::dictionary() != "keyboard/dict_pinyin.dat");
    }
};

QTEST_MAIN(TestKeyboard)
#include "test_keyboard.moc"
