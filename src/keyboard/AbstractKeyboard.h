#pragma once
// Pages of keys with their shift, without knowing what is typed into.

#include "keyboard/KeyButton.h"
#include "keyboard/KeyLayouts.h"

#include <QElapsedTimer>
#include <QWidget>
#include <map>

namespace Tactil
{
/// GUI thread.
class AbstractKeyboard : public QWidget
{
    Q_OBJECT
public:
    explicit AbstractKeyboard(QWidget *parent);
    KeyPage page() const { return m_page; }
    bool isUpperCase() const { return m_shift != Shift::Off; }

protected:
    /// A key other than shift and page keys was struck; a text key's text in the case that was chosen.
    virtual void strike(KeyAction action, const QString &text) = 0;
    virtual void showPage(KeyPage page);
    /// Where a page's keys lie.
    virtual QRect keyArea(KeyPage page) const = 0;

    void setActionEnabled(KeyAction action, bool enabled);
    void shiftOff() { setShift(Shift::Off); }
    /// Forgets the touches on all keys.
    void letGo();

private:
    enum class Shift { Off, Once, Caps };
    struct PlacedKey {
        Key key;
        KeyButton *button;
    };
    struct Page {
        QWidget *widget = nullptr;
        QVector<PlacedKey> keys;
    };

    Page makePage(KeyPage page);
    KeyButton *makeButton(const Key &key, QWidget *parent);
    void keyStruck(const Key &key);
    void pressShift();
    void setShift(Shift shift);
    void showCase();

    std::map<KeyPage, Page> m_pages; ///< made when first shown
    KeyPage m_page = KeyPage::Letters;
    Shift m_shift = Shift::Off;
    QElapsedTimer m_sinceShift;
};
} // namespace Tactil
