#include "WidgetFinder.h"

#include <QApplication>
#include <QWidget>

namespace
{
/// The widget that a touch there would reach.
QWidget *topmostAt(QWidget *widget, const QPoint &at)
{
    QWidget *window = widget->window();
    const QPoint inWindow = widget->mapTo(window, at);
    if (!window->rect().contains(inWindow))
        return nullptr;
    QWidget *top = window->childAt(inWindow);
    return top ? top : window;
}

QString describe(const QWidget *widget)
{
    const QString type = widget->metaObject()->className();
    return widget->objectName().isEmpty() ? "a " + type : widget->objectName() + " (" + type + ")";
}

/// A window that shuts the others out, such as a modal dialog or an open menu.
QWidget *blockingWindow(const QWidget *widget)
{
    for (QWidget *other : {QApplication::activePopupWidget(), QApplication::activeModalWidget()})
        if (other && other != widget->window() && !other->isAncestorOf(widget))
            return other;
    return nullptr;
}
} // namespace

QPoint visibleMiddle(QWidget *widget, const QRect &area)
{
    QRect left = area & widget->rect();
    for (QWidget *child = widget; !child->isWindow() && child->parentWidget();
         child = child->parentWidget()) {
        QWidget *parent = child->parentWidget();
        left &= QRect(widget->mapFrom(parent, QPoint()), parent->size());
    }
    return left.isEmpty() ? QPoint(-1, -1) : left.center();
}

QString whyOutOfReach(QWidget *widget, const QPoint &at)
{
    if (!widget->isVisible())
        return describe(widget) + " is hidden";
    if (!widget->isEnabled())
        return describe(widget) + " is disabled";
    if (QWidget *other = blockingWindow(widget))
        return describe(widget) + " is shut out by " + describe(other);
    QWidget *top = widget->rect().contains(at) ? topmostAt(widget, at) : nullptr;
    if (!top)
        return describe(widget) + " lies outside the visible part of its window";
    if (top != widget && !widget->isAncestorOf(top))
        return describe(widget) + " is covered by " + describe(top);
    return {};
}

bool isSeen(QWidget *widget)
{
    if (!widget->isVisible())
        return false;
    const QPoint at = visibleMiddle(widget, widget->rect());
    QWidget *top = at.x() < 0 ? nullptr : topmostAt(widget, at);
    if (!top)
        return false;
    // What lets touches through is still seen where they fall on what it lies on.
    const bool through = widget->testAttribute(Qt::WA_TransparentForMouseEvents) && top->isAncestorOf(widget);
    return through || top == widget || widget->isAncestorOf(top);
}

QWidget *findWidget(const QString &name)
{
    QWidget *best = nullptr;
    int rank = -1;
    for (QWidget *widget : QApplication::allWidgets()) {
        if (widget->objectName() != name)
            continue;
        const int worth = isSeen(widget) ? 2 : widget->isVisible() ? 1 : 0;
        if (worth > rank) {
            best = widget;
            rank = worth;
        }
    }
    return best;
}

QWidget *openMessageForm()
{
    for (QWidget *widget : QApplication::allWidgets()) {
        const bool form = widget->inherits("MsgForm") || widget->objectName() == "MsgForm";
        // The form is never hidden: it is raised to be shown and lowered under the pages to be put away.
        if (form && isSeen(widget))
            return widget;
    }
    return nullptr;
}
