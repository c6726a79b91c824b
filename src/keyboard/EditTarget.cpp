#include "keyboard/EditTarget.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace Tactil
{
namespace
{
constexpr Qt::InputMethodHints numberHints =
    Qt::ImhDigitsOnly | Qt::ImhFormattedNumbersOnly | Qt::ImhDialableCharactersOnly | Qt::ImhPreferNumbers;
constexpr Qt::InputMethodHints latinHints =
    Qt::ImhHiddenText | Qt::ImhSensitiveData | Qt::ImhLatinOnly | Qt::ImhDigitsOnly |
    Qt::ImhFormattedNumbersOnly | Qt::ImhDialableCharactersOnly | Qt::ImhEmailCharactersOnly |
    Qt::ImhUrlCharactersOnly | Qt::ImhUppercaseOnly | Qt::ImhLowercaseOnly;

bool isTextBox(const QWidget *widget)
{
    return qobject_cast<const QTextEdit *>(widget) || qobject_cast<const QPlainTextEdit *>(widget);
}

template <class Box> bool canBeChanged(const QWidget *widget)
{
    const auto *box = qobject_cast<const Box *>(widget);
    return box && !box->isReadOnly();
}
} // namespace

bool EditTarget::isEditBox(const QWidget *widget)
{
    return widget && widget->isEnabled() &&
           (canBeChanged<QLineEdit>(widget) || canBeChanged<QTextEdit>(widget) ||
            canBeChanged<QPlainTextEdit>(widget) || canBeChanged<QAbstractSpinBox>(widget));
}

void EditTarget::setBox(QWidget *box)
{
    if (m_box == box)
        return;
    if (m_box) {
        m_box->removeEventFilter(this);
        disconnect(m_box, nullptr, this, nullptr);
    }
    m_box = box;
    if (box) {
        box->installEventFilter(this);
        connect(box, &QObject::destroyed, this, &EditTarget::lost);
    }
}

bool EditTarget::wantsNumbers() const
{
    return m_box && (m_box->inputMethodHints() & numberHints || qobject_cast<QAbstractSpinBox *>(m_box));
}

bool EditTarget::takesChinese() const
{
    const auto *line = qobject_cast<QLineEdit *>(m_box);
    return m_box && !(m_box->inputMethodHints() & latinHints) && !qobject_cast<QAbstractSpinBox *>(m_box) &&
           (!line || line->echoMode() == QLineEdit::Normal);
}

void EditTarget::type(int key, const QString &text)
{
    const QPointer<QWidget> box = m_box; // what is typed may have the box destroyed
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier, text);
        if (box)
            QApplication::sendEvent(box, &event);
    }
}

bool EditTarget::finishLine()
{
    type(Qt::Key_Return, QStringLiteral("\r"));
    if (!m_box || isTextBox(m_box))
        return bool(m_box);
    QWidget *next = nextBox();
    if (next)
        next->setFocus(Qt::OtherFocusReason);
    return next;
}

/// The next one by the order of the focus until the window comes round again.
QWidget *EditTarget::nextBox() const
{
    const QWidget *window = m_box->window();
    for (QWidget *next = m_box->nextInFocusChain(); next != window && next != m_box;
         next = next->nextInFocusChain())
        if (isEditBox(next) && next->isVisible() && next->focusPolicy() & Qt::TabFocus && !next->focusProxy())
            return next;
    return nullptr;
}

bool EditTarget::eventFilter(QObject *watched, QEvent *event)
{
    const bool disabled = event->type() == QEvent::EnabledChange && m_box && !m_box->isEnabled();
    if (watched == m_box && (disabled || event->type() == QEvent::Hide))
        emit lost();
    return QObject::eventFilter(watched, event);
}
} // namespace Tactil
