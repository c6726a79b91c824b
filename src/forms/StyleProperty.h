#pragma once
// Properties by which the style sheet tells the states of a widget apart.

#include <QStyle>
#include <QVariant>
#include <QWidget>

/// Sets a property that the style sheet asks for. Each new value polishes the widget anew, which is slow, so
/// an old one does nothing. GUI thread.
inline void setStyleProperty(QWidget *widget, const char *name, const QVariant &value)
{
    if (widget->property(name) == value)
        return;
    widget->setProperty(name, value);
    widget->style()->unpolish(widget);
    widget->style()->polish(widget);
}
