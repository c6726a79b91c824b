#pragma once
// Edit boxes of a page: their hints' colour, and which touches ask for the on-screen keyboard.

#include "forms/StyleProperty.h"

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

/// Has the page's event filter see every press of its edit boxes, and the style sheet tell a hint from a
/// text: it gives both one colour otherwise. A long press opens no menu: its words would be English.
inline void setUpEditBoxes(QWidget *page)
{
    const auto tellHints = [](auto *box, auto isEmpty) {
        const auto tell = [box, isEmpty] { setStyleProperty(box, "hint", isEmpty()); };
        box->setContextMenuPolicy(Qt::NoContextMenu);
        QObject::connect(box, &std::remove_pointer_t<decltype(box)>::textChanged, box, tell);
        tell();
    };
    for (QLineEdit *box : page->findChildren<QLineEdit *>()) {
        box->installEventFilter(page);
        tellHints(box, [box] { return box->text().isEmpty(); });
    }
    for (QTextEdit *box : page->findChildren<QTextEdit *>()) {
        box->viewport()->installEventFilter(page);
        tellHints(box, [box] { return box->document()->isEmpty(); });
    }
}
