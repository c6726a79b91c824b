#pragma once
// Which touches ask for the on-screen keyboard.

#include <QAbstractScrollArea>
#include <QEvent>
#include <QLineEdit>
#include <QTextEdit>

/// Whether an event is the press of an edit box, as event filters see it. A text box gets its presses through
/// its viewport. GUI thread.
inline bool isEditBoxPress(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::MouseButtonPress)
        return false;
    return qobject_cast<QLineEdit *>(watched) || qobject_cast<QTextEdit *>(watched) ||
           (watched->parent() && qobject_cast<QTextEdit *>(watched->parent()));
}
