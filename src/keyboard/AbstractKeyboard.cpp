#include "keyboard/AbstractKeyboard.h"

#include <QVariant>

namespace Tactil
{
namespace
{
constexpr int doubleTapMs = 400;

KeyStroke strokeOf(KeyAction action)
{
    switch (action) {
    case KeyAction::Shift:
        return KeyStroke::AtPress;
    case KeyAction::Enter:
    case KeyAction::Language:
    case KeyAction::Page:
    case KeyAction::Hide:
        return KeyStroke::AtRelease;
    default:
        return KeyStroke::Repeating;
    }
}

/// A button takes a single '&' for the mark of a shortcut.
QString buttonText(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}
} // namespace

AbstractKeyboard::AbstractKeyboard(QWidget *parent) : QWidget(parent)
{
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_StyledBackground);
}

KeyButton *AbstractKeyboard::makeButton(const Key &key, QWidget *parent)
{
    auto *button = new KeyButton(strokeOf(key.action), parent);
    button->setObjectName(QStringLiteral("key_") + key.name);
    const bool types = key.action == KeyAction::Text || key.action == KeyAction::Space;
    button->setProperty("role", QLatin1String(types ? "key" : "function"));
    button->setText(buttonText(key.caption));
    if (!key.icon.isEmpty())
        button->setKeyIcon(key.icon);
    connect(button, &KeyButton::struck, this, [this, key] { keyStruck(key); });
    if (key.action == KeyAction::Shift)
        connect(button, &KeyButton::held, this, [this] { setShift(Shift::Caps); });
    return button;
}

AbstractKeyboard::Page AbstractKeyboard::makePage(KeyPage page)
{
    Page made;
    made.widget = new QWidget(this);
    made.widget->hide();
    const QRect area = keyArea(page);
    made.widget->setGeometry(area);
    const QVector<KeyRow> rows = keyRows(page);
    for (int row = 0; row < rows.size(); ++row) {
        const int top = area.height() * row / rows.size();
        const int bottom = area.height() * (row + 1) / rows.size();
        int units = 0;
        for (const Key &key : rows.at(row)) {
            const int left = area.width() * units / rowUnits;
            units += key.units;
            KeyButton *button = makeButton(key, made.widget);
            button->setGeometry(left, top, area.width() * units / rowUnits - left, bottom - top);
            made.keys.append({key, button});
        }
    }
    return made;
}

void AbstractKeyboard::showPage(KeyPage page)
{
    const auto old = m_pages.find(m_page);
    if (!m_pages.count(page))
        m_pages[page] = makePage(page);
    if (old != m_pages.end() && m_page != page)
        old->second.widget->hide();
    m_page = page;
    shiftOff();
    showCase();
    m_pages[page].widget->show();
}

void AbstractKeyboard::setActionEnabled(KeyAction action, bool enabled)
{
    for (const PlacedKey &placed : m_pages[m_page].keys)
        if (placed.key.action == action)
            placed.button->setEnabled(enabled);
}

void AbstractKeyboard::letGo()
{
    for (const PlacedKey &placed : m_pages[m_page].keys)
        placed.button->letGo();
}

void AbstractKeyboard::keyStruck(const Key &key)
{
    if (key.action == KeyAction::Shift) {
        pressShift();
    } else if (key.action == KeyAction::Page) {
        showPage(key.page);
    } else {
        strike(key.action, isUpperCase() ? key.text.toUpper() : key.text);
        if (key.action == KeyAction::Text && m_shift == Shift::Once)
            shiftOff();
    }
}

/// Once; a second tap soon after the first keeps capitals until the next one.
void AbstractKeyboard::pressShift()
{
    const bool second = m_shift == Shift::Once && m_sinceShift.elapsed() < doubleTapMs;
    setShift(second ? Shift::Caps : m_shift == Shift::Off ? Shift::Once : Shift::Off);
    m_sinceShift.start();
}

void AbstractKeyboard::setShift(Shift shift)
{
    if (m_shift == shift)
        return;
    m_shift = shift;
    showCase();
}

void AbstractKeyboard::showCase()
{
    static const char *const icons[] = {"shift", "shift-once", "caps"};
    for (const PlacedKey &placed : m_pages[m_page].keys) {
        if (placed.key.action == KeyAction::Shift)
            placed.button->setKeyIcon(QLatin1String(icons[int(m_shift)]));
        else if (placed.key.action == KeyAction::Text)
            placed.button->setText(
                buttonText(isUpperCase() ? placed.key.caption.toUpper() : placed.key.caption));
    }
}
} // namespace Tactil
