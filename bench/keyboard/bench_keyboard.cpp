// How long it takes from the touch of a key until its text is painted, under the pages' style sheet, and
// until the dictionary has the words of one more pinyin letter. Exit code 1 when one takes longer than it
// may.

#include "keyboard/KeyButton.h"
#include "keyboard/Keyboard.h"
#include "keyboard/PinyinEngine.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <vector>

namespace
{
constexpr double keyLimitMs = 16, lookupLimitMs = 0.2;
constexpr int rounds = 40;
constexpr int wordsOfPage = 7;
constexpr double typical = 0.5, nearlyAll = 0.99;

/// Notices that what it watches was painted.
class PaintWatch : public QObject
{
public:
    bool painted = false;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        painted = painted || event->type() == QEvent::Paint;
        return false;
    }
};

double milliseconds(const QElapsedTimer &clock)
{
    return double(clock.nsecsElapsed()) / 1e6;
}

Tactil::KeyButton *findKey(const Tactil::Keyboard &keyboard, const QString &name)
{
    for (Tactil::KeyButton *key : keyboard.findChildren<Tactil::KeyButton *>("key_" + name))
        if (key->isVisible())
            return key;
    return nullptr;
}

void touch(QWidget *key, QEvent::Type type)
{
    QMouseEvent event(type, key->rect().center(), Qt::LeftButton, Qt::LeftButton, {});
    QApplication::sendEvent(key, &event);
}

/// From the touch until `shown`, where the key's text comes up, is painted.
double keyTime(const Tactil::Keyboard &keyboard, const QString &name, QWidget *shown)
{
    PaintWatch watch;
    shown->installEventFilter(&watch);
    QElapsedTimer clock;
    clock.start();
    touch(findKey(keyboard, name), QEvent::MouseButtonPress);
    while (!watch.painted && milliseconds(clock) < 1000)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    const double time = milliseconds(clock);
    touch(findKey(keyboard, name), QEvent::MouseButtonRelease);
    QApplication::processEvents();
    return time;
}

bool report(const char *what, std::vector<double> times, double share, double limit)
{
    std::sort(times.begin(), times.end());
    const auto at = [&](double part) { return times[size_t(part * double(times.size() - 1))]; };
    const bool good = at(share) < limit;
    std::printf("%-32s median %.3f ms, p99 %.3f ms, longest %.3f ms (limit %.1f)%s\n", what, at(typical),
                at(nearlyAll), times.back(), limit, good ? "" : "  MISSED");
    return good;
}

std::vector<double> typeWords(const Tactil::Keyboard &keyboard, const QStringList &keys, QWidget *shown)
{
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round)
        for (const QString &key : keys)
            times.push_back(keyTime(keyboard, key, shown));
    return times;
}

bool keys(QLineEdit *box, Tactil::Keyboard &keyboard)
{
    bool good = report("letter", typeWords(keyboard, {"w", "a", "x"}, box), nearlyAll, keyLimitMs);
    std::vector<double> capitals;
    for (int round = 0; round < rounds; ++round) {
        touch(findKey(keyboard, "shift"), QEvent::MouseButtonPress);
        touch(findKey(keyboard, "shift"), QEvent::MouseButtonRelease);
        QApplication::processEvents();
        capitals.push_back(keyTime(keyboard, "w", box)); // all letters change their case with it
    }
    good &= report("capital letter", capitals, nearlyAll, keyLimitMs);
    for (QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
        touch(findKey(keyboard, "language"), type);
    QApplication::processEvents();
    const QStringList letters = QString("z h i c h e n g backspace backspace backspace backspace "
                                        "backspace backspace backspace backspace")
                                    .split(' ');
    auto *preedit = keyboard.findChild<QLabel *>("label_preedit");
    return report("pinyin letter with its words", typeWords(keyboard, letters, preedit), nearlyAll,
                  keyLimitMs) &&
           good;
}

bool lookups()
{
    Tactil::PinyinEngine engine;
    if (!engine.open())
        return false;
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round)
        for (const char *word : {"zhichengcailiao", "mozhan", "dayinji", "penzuiqingxi", "zcl", "jiezhi"}) {
            engine.clear();
            for (const char *letter = word; *letter; ++letter) {
                QElapsedTimer clock;
                clock.start();
                engine.add(*letter);
                for (int i = 0; i < wordsOfPage; ++i)
                    engine.candidate(i);
                times.push_back(milliseconds(clock));
            }
        }
    return report("words of one more letter", times, typical, lookupLimitMs);
}
} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QTemporaryDir folder;
    QDir::setCurrent(folder.path());
    QDir().mkpath("config");
    QFile style(STYLE_FILE);
    if (style.open(QIODevice::ReadOnly))
        application.setStyleSheet(QString::fromUtf8(style.readAll()));
    bool good = lookups();
    QWidget window;
    window.resize(600, 1024);
    auto *box = new QLineEdit(&window);
    box->setGeometry(16, 100, 400, 60);
    auto *keyboard = new Tactil::Keyboard(&window);
    keyboard->move(0, window.height() - keyboard->height());
    window.show();
    window.activateWindow();
    box->setFocus();
    keyboard->edit(box);
    QApplication::processEvents();
    good &= keys(box, *keyboard);
    return good ? 0 : 1;
}
