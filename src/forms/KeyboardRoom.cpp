#include "forms/KeyboardRoom.h"

#include "keyboard/Keyboard.h"

#include <QApplication>
#include <QEvent>
#include <QTimer>

namespace
{
constexpr int gap = 12; // pixels between the box and the keyboard, or the upper edge of the pages
} // namespace

KeyboardRoom::KeyboardRoom(QWidget *pages, Tactil::Keyboard *keyboard)
    : QObject(keyboard), m_pages(pages), m_keyboard(keyboard)
{
    connect(keyboard, &Tactil::Keyboard::editing, this, &KeyboardRoom::want);
    connect(keyboard, &Tactil::Keyboard::wasPutAway, this, [this] { want(nullptr); });
}

void KeyboardRoom::want(QWidget *box)
{
    m_box = box;
    if (QApplication::mouseButtons() == Qt::NoButton)
        return arrange();
    if (!m_waits)
        qApp->installEventFilter(this);
    m_waits = true;
}

bool KeyboardRoom::eventFilter(QObject *watched, QEvent *event)
{
    if (m_waits && event->type() == QEvent::MouseButtonRelease) {
        m_waits = false;
        qApp->removeEventFilter(this);
        QTimer::singleShot(0, this, &KeyboardRoom::arrange); // after the release has done its work
    }
    return QObject::eventFilter(watched, event);
}

void KeyboardRoom::arrange()
{
    QWidget *page = m_box ? pageOf(m_box) : nullptr;
    if (m_page && m_page != page)
        m_page->move(0, 0);
    m_page = page;
    if (page)
        page->move(0, -shiftFor(page));
}

/// Far enough for the lower edge of the box, unless that would hide its upper one.
int KeyboardRoom::shiftFor(const QWidget *page) const
{
    const int free = m_keyboard->y() - m_pages->mapTo(m_pages->window(), QPoint()).y();
    const int top = m_box->mapTo(page, QPoint()).y();
    const int needed = top + m_box->height() + gap - free;
    return qMax(0, qMin(needed, top - gap));
}

QWidget *KeyboardRoom::pageOf(QWidget *widget) const
{
    while (widget && widget->parentWidget() != m_pages)
        widget = widget->parentWidget();
    return widget;
}
