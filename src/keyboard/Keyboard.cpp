#include "keyboard/Keyboard.h"

#include "keyboard/ChineseWidget.h"

#include <QApplication>
#include <QDebug>

namespace Tactil
{
namespace
{
constexpr int keyboardWidth = 600, keyboardHeight = 418;

/// The code that a hardware key of this character has; 0 where there is none.
int keyCode(const QString &text)
{
    const ushort code = text.size() == 1 ? text.at(0).toUpper().unicode() : 0;
    return code < 0x80 ? code : 0;
}
} // namespace

Keyboard::Keyboard(QWidget *parent) : AbstractKeyboard(parent), m_chinese(new ChineseWidget(this))
{
    resize(keyboardWidth, keyboardHeight);
    setObjectName(QStringLiteral("keyboard"));
    m_chinese->hide();
    if (PinyinEngine::dictionary().isEmpty())
        qWarning() << "there is no pinyin dictionary: the keyboard writes Latin only";
    showPage(KeyPage::Letters);
    connect(m_chinese, &ChineseWidget::completed, this,
            [this](const QString &text) { m_target.type(0, text); });
    connect(&m_target, &EditTarget::lost, this, &Keyboard::putAway);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) { focusMoved(now); });
}

Keyboard::~Keyboard() = default;

QRect Keyboard::keyArea(KeyPage page) const
{
    return rect().adjusted(0, page == KeyPage::Pinyin ? ChineseWidget::stripHeight : 0, 0, 0);
}

void Keyboard::edit(QWidget *box)
{
    const bool isNew = box != m_target.box() || !m_isUp;
    m_isUp = true;
    if (!EditTarget::isEditBox(box) || !isNew)
        return;
    m_chinese->cancel();
    m_target.setBox(box);
    showPage(m_target.wantsNumbers() ? KeyPage::Numbers : letters());
    emit editing(box);
}

void Keyboard::putAway()
{
    if (!m_isUp)
        return;
    m_isUp = false;
    lower();
    letGo();
    m_chinese->cancel();
    m_chinese->save();
    m_target.setBox(nullptr);
    emit wasPutAway();
}

bool Keyboard::isComposing() const
{
    return m_chinese->isComposing();
}

KeyPage Keyboard::letters() const
{
    return m_wantsChinese && m_target.takesChinese() ? KeyPage::Pinyin : KeyPage::Letters;
}

void Keyboard::showPage(KeyPage page)
{
    if (isComposing())
        m_chinese->chooseFirst();
    const KeyPage shown = page == KeyPage::Letters ? letters() : page;
    AbstractKeyboard::showPage(shown);
    m_chinese->setVisible(shown == KeyPage::Pinyin);
    setActionEnabled(KeyAction::Language, !PinyinEngine::dictionary().isEmpty() && m_target.takesChinese());
}

void Keyboard::changeLanguage()
{
    m_wantsChinese = !m_wantsChinese && m_chinese->open();
    showPage(KeyPage::Letters);
}

/// Whether the key belongs to the composition and has been used for it.
bool Keyboard::compose(KeyAction action, const QString &text)
{
    const QChar letter = text.isEmpty() ? QChar() : text.at(0);
    const bool isLetter = letter >= QLatin1Char('a') && letter <= QLatin1Char('z');
    if (isLetter || (isComposing() && letter == QLatin1Char('\''))) {
        m_chinese->add(letter);
        return true;
    }
    if (!isComposing())
        return false;
    if (action == KeyAction::Backspace)
        m_chinese->backspace();
    else if (action == KeyAction::Enter)
        m_chinese->takeLetters();
    else
        m_chinese->chooseFirst();
    return action == KeyAction::Backspace || action == KeyAction::Enter || action == KeyAction::Space;
}

void Keyboard::strike(KeyAction action, const QString &text)
{
    if (page() == KeyPage::Pinyin && !m_target.takesChinese()) // a box that has just begun to hide its text
        m_chinese->cancel();
    else if (page() == KeyPage::Pinyin && action != KeyAction::Hide && compose(action, text))
        return;
    switch (action) {
    case KeyAction::Text:
        return m_target.type(keyCode(text), text);
    case KeyAction::Space:
        return m_target.type(Qt::Key_Space, QStringLiteral(" "));
    case KeyAction::Backspace:
        return m_target.type(Qt::Key_Backspace);
    case KeyAction::Left:
        return m_target.type(Qt::Key_Left);
    case KeyAction::Right:
        return m_target.type(Qt::Key_Right);
    case KeyAction::Language:
        return changeLanguage();
    case KeyAction::Enter:
        if (m_target.finishLine())
            return;
        return putAway();
    default:
        return putAway();
    }
}

void Keyboard::focusMoved(QWidget *now)
{
    if (!m_isUp)
        return;
    const QWidget *box = m_target.box();
    const bool windowLeft = !now && box && box->window()->focusWidget() == box;
    const bool boxTaken =
        box && !(box->isEnabled() && box->isVisible()); // the focus has fled to any other one
    if (EditTarget::isEditBox(now) && !boxTaken)
        edit(now);
    else if (!windowLeft)
        putAway();
}
} // namespace Tactil
