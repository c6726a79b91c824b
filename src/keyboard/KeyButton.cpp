#include "keyboard/KeyButton.h"

#include <QHash>
#include <QMouseEvent>
#include <QPainter>
#include <QSvgRenderer>
#include <QTouchEvent>

namespace Tactil
{
namespace
{
constexpr int iconPixels = 28;
constexpr qreal disabledOpacity = 0.4;

QIcon drawIcon(const QString &name)
{
    QSvgRenderer picture(QStringLiteral(":/keyboard/%1.svg").arg(name));
    QIcon icon;
    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Disabled}) {
        QPixmap pixmap(iconPixels, iconPixels);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setOpacity(mode == QIcon::Disabled ? disabledOpacity : 1);
        picture.render(&painter);
        painter.end();
        icon.addPixmap(pixmap, mode);
    }
    return icon;
}
} // namespace

KeyButton::KeyButton(KeyStroke stroke, QWidget *parent) : QPushButton(parent), m_stroke(stroke)
{
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_AcceptTouchEvents);
    setIconSize(QSize(iconPixels, iconPixels));
    connect(&m_timer, &QTimer::timeout, this, &KeyButton::timePassed);
}

void KeyButton::setKeyIcon(const QString &name)
{
    static QHash<QString, QIcon> icons;
    if (!icons.contains(name))
        icons.insert(name, drawIcon(name));
    setIcon(icons.value(name));
}

void KeyButton::touchDown()
{
    setDown(true);
    m_timer.start(repeatDelayMs);
    if (m_stroke != KeyStroke::AtRelease)
        emit struck();
}

void KeyButton::touchMoved(const QPoint &position)
{
    if (!rect().contains(position))
        letGo();
}

void KeyButton::touchUp()
{
    const bool wasDown = isDown();
    letGo();
    if (wasDown && m_stroke == KeyStroke::AtRelease)
        emit struck();
}

void KeyButton::letGo()
{
    m_timer.stop();
    setDown(false);
}

void KeyButton::timePassed()
{
    if (m_stroke == KeyStroke::Repeating) {
        m_timer.start(repeatPeriodMs);
        emit struck();
    } else {
        m_timer.stop();
        emit held();
    }
}

bool KeyButton::followFinger(QTouchEvent *event)
{
    if (event->type() == QEvent::TouchBegin)
        touchDown();
    else if (event->type() == QEvent::TouchUpdate && !event->touchPoints().isEmpty())
        touchMoved(event->touchPoints().first().pos().toPoint());
    else if (event->type() == QEvent::TouchEnd)
        touchUp();
    else
        letGo();
    event->accept();
    return true;
}

bool KeyButton::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
        return isEnabled() && followFinger(static_cast<QTouchEvent *>(event));
    default:
        return QPushButton::event(event);
    }
}

void KeyButton::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        touchDown();
}

void KeyButton::mouseMoveEvent(QMouseEvent *event)
{
    touchMoved(event->pos());
}

void KeyButton::mouseReleaseEvent(QMouseEvent *)
{
    touchUp();
}

void KeyButton::hideEvent(QHideEvent *event)
{
    letGo();
    QPushButton::hideEvent(event);
}

void KeyButton::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::EnabledChange && !isEnabled())
        letGo();
    QPushButton::changeEvent(event);
}
} // namespace Tactil
