#include "Touch.h"

#include "WidgetFinder.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMouseEvent>

namespace
{
void postMouse(QWidget *target, const QPoint &at, QEvent::Type type)
{
    const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
    QApplication::postEvent(target,
                            new QMouseEvent(type, at, target->mapTo(target->window(), at),
                                            target->mapToGlobal(at), Qt::LeftButton, held, Qt::NoModifier));
}

void postKey(QWidget *target, int key, Qt::KeyboardModifiers modifiers, const QString &text)
{
    for (QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
        QApplication::postEvent(target, new QKeyEvent(type, key, modifiers, text));
}
} // namespace

QString touch(QWidget *widget, const QRect &area)
{
    const QPoint at = visibleMiddle(widget, area);
    const QString problem = whyOutOfReach(widget, at);
    if (!problem.isEmpty())
        return problem;
    QWidget *window = widget->window();
    QWidget *target = window->childAt(widget->mapTo(window, at));
    if (!target)
        target = window;
    const QPoint inTarget = target->mapFrom(window, widget->mapTo(window, at));
    // Posted like the touch itself: a slot on a change of focus may ask a question and hold the line.
    if (target->focusPolicy() & Qt::ClickFocus)
        QMetaObject::invokeMethod(
            target, [target] { target->setFocus(Qt::MouseFocusReason); }, Qt::QueuedConnection);
    postMouse(target, inTarget, QEvent::MouseButtonPress);
    postMouse(target, inTarget, QEvent::MouseButtonRelease);
    return {};
}

QString touchCell(QAbstractItemView *view, int row, int column)
{
    const QModelIndex index =
        view->model() ? view->model()->index(row, column, view->rootIndex()) : QModelIndex();
    if (!index.isValid())
        return QString("there is no cell %1, %2 in %3").arg(row).arg(column).arg(view->objectName());
    const QString problem = whyOutOfReach(view, visibleMiddle(view, view->rect()));
    if (!problem.isEmpty())
        return problem;
    view->scrollTo(index);
    const QRect area = view->visualRect(index);
    if (area.isEmpty())
        return QString("the cell %1, %2 in %3 is hidden").arg(row).arg(column).arg(view->objectName());
    return touch(view->viewport(), area);
}

QString typeInto(QWidget *widget, const QString &text)
{
    const QString problem = touch(widget, widget->rect());
    if (!problem.isEmpty())
        return problem;
    postKey(widget, Qt::Key_A, Qt::ControlModifier, {});
    postKey(widget, Qt::Key_Delete, Qt::NoModifier, {});
    for (const QChar letter : text)
        postKey(widget, 0, Qt::NoModifier, letter);
    return {};
}

QWidget *mainWindow()
{
    QWidget *best = nullptr;
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (!window->isVisible() || window->windowType() == Qt::Popup || window->windowType() == Qt::ToolTip)
            continue;
        if (!best || qobject_cast<QMainWindow *>(window))
            best = window;
    }
    return best;
}
