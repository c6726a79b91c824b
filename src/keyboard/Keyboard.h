#pragma once
// The touch screen's keyboard.

#include "keyboard/AbstractKeyboard.h"
#include "keyboard/EditTarget.h"

namespace Tactil
{
class ChineseWidget;

/// Lies under the pages until an edit box calls it up, and types into the edit box that has the focus. It
/// goes down by itself when that box is left. GUI thread.
class Keyboard : public AbstractKeyboard
{
    Q_OBJECT
public:
    explicit Keyboard(QWidget *parent = nullptr);
    ~Keyboard() override;

    /// Types into this widget from now on, if it is an edit box.
    void edit(QWidget *box);
    /// Goes under the pages. What was being composed is dropped.
    void putAway();
    bool isUp() const { return m_isUp; }
    bool isComposing() const;

signals:
    void editing(QWidget *box); ///< it is up for this box
    void wasPutAway();

protected:
    void strike(KeyAction action, const QString &text) override;
    void showPage(KeyPage page) override;
    QRect keyArea(KeyPage page) const override;
    void mousePressEvent(QMouseEvent *) override {}

private:
    KeyPage letters() const;
    bool compose(KeyAction action, const QString &text);
    void changeLanguage();
    void focusMoved(QWidget *now);

    EditTarget m_target;
    ChineseWidget *m_chinese;
    bool m_isUp = false;
    bool m_wantsChinese = false; ///< the language chosen last, for boxes that take both
};
} // namespace Tactil
