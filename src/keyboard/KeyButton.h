#pragma once
// One key. Its whole area can be touched; the style sheet paints a gap around what is seen of it.

#include <QPushButton>
#include <QTimer>

class QTouchEvent;

namespace Tactil
{
/// When a key does what it is for.
enum class KeyStroke {
    AtPress,   ///< at once, since typing must feel instant
    Repeating, ///< at once, and again while it is held
    AtRelease  ///< so that what lies under the finger does not change before it is lifted
};

/// Never takes the focus. Fingers are followed one by one, so that the next key may go down before the last
/// one is up. GUI thread.
class KeyButton : public QPushButton
{
    Q_OBJECT
public:
    static constexpr int repeatDelayMs = 400;
    static constexpr int repeatPeriodMs = 60;

    KeyButton(KeyStroke stroke, QWidget *parent);
    /// Forgets a touch that is on the key.
    void letGo();
    /// An icon of the keyboard's resources.
    void setKeyIcon(const QString &name);

signals:
    void struck();
    void held(); ///< a key that does not repeat has been down for the delay

protected:
    bool event(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void touchDown();
    void touchMoved(const QPoint &position);
    void touchUp();
    void timePassed();
    bool followFinger(QTouchEvent *event);

    const KeyStroke m_stroke;
    QTimer m_timer;
};
} // namespace Tactil
