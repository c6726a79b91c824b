#include "forms/DarkScreen.h"

#include "forms/MsgForm.h"
#include "platform/PlatformSettings.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>

namespace
{
constexpr double defaultMinutes = 30;
constexpr double longestMinutes = 7 * 24 * 60; ///< what a timer's milliseconds hold
constexpr double msPerMinute = 60000;

enum class Touch { None, Begins, Goes, Ends };

Touch touchOf(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::TouchBegin:
    case QEvent::KeyPress:
        return Touch::Begins;
    case QEvent::MouseMove:
    case QEvent::TouchUpdate:
    case QEvent::ShortcutOverride:
    case QEvent::Wheel:
        return Touch::Goes;
    case QEvent::MouseButtonRelease:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
    case QEvent::KeyRelease:
        return Touch::Ends;
    default:
        return Touch::None;
    }
}
} // namespace

DarkScreen::DarkScreen(QWidget *window) : QWidget(window)
{
    hide();
    const double minutes = platformSetting(QStringLiteral("ScreenOffMinutes")).toDouble(defaultMinutes);
    if (minutes <= 0)
        return;
    m_idle.setSingleShot(true);
    connect(&m_idle, &QTimer::timeout, this, &DarkScreen::goDark);
    m_idle.start(int(qMin(minutes, longestMinutes) * msPerMinute));
    qApp->installEventFilter(this);
}

void DarkScreen::goDark()
{
    if (msgForm()->isTaken()) {
        m_idle.start(); // the operator is to see it from afar
        return;
    }
    setGeometry(parentWidget()->rect());
    show();
    raise();
}

void DarkScreen::wake()
{
    hide();
    m_idle.start();
}

/// Whether a touch belongs to the waking of the screen.
bool DarkScreen::swallow(QEvent *event)
{
    const Touch touch = touchOf(event->type());
    if (touch == Touch::None)
        return false;
    m_idle.start();
    const bool dark = isVisible();
    if (dark && touch == Touch::Begins) {
        wake();
        m_woken.start();
    }
    const bool waking = m_woken.isValid() && !m_woken.hasExpired(QApplication::doubleClickInterval());
    const bool swallowed = dark || waking || m_held;
    if (touch == Touch::Begins)
        m_held = dark || waking; // a new touch: the end of the last one may have been lost
    else if (touch == Touch::Ends)
        m_held = false;
    return swallowed;
}

bool DarkScreen::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ZOrderChange && isVisible() && watched == msgForm() && msgForm()->isTaken())
        wake();
    if (!swallow(event))
        return false;
    event->accept();
    return true;
}

void DarkScreen::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), Qt::black);
}
