#pragma once
// Keeps the edit box in sight while the keyboard covers the lower part of the window.

#include <QObject>
#include <QPointer>

class QWidget;
namespace Tactil
{
class Keyboard;
}

/// Moves the page of the box up as far as it must and back afterwards, but nothing while a finger is down, so
/// that what it touches stays under it. GUI thread.
class KeyboardRoom : public QObject
{
    Q_OBJECT
public:
    /// `pages` is the container whose child each page is.
    KeyboardRoom(QWidget *pages, Tactil::Keyboard *keyboard);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void want(QWidget *box);
    void arrange();
    int shiftFor(const QWidget *page) const;
    QWidget *pageOf(QWidget *widget) const;

    QWidget *const m_pages;
    Tactil::Keyboard *const m_keyboard;
    QPointer<QWidget> m_box;
    QPointer<QWidget> m_page; ///< that is moved up
    bool m_waits = false;     ///< for the finger
};
