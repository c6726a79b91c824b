#pragma once
// The screen goes dark when nobody touches it.

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

/// A black cover over the whole window after "ScreenOffMinutes" of config/Platform.json without a touch (30
/// when absent, 0: never). A message that is on the form keeps the screen lit, and one that comes lights it.
/// The touch that wakes the screen, and what follows it within a double tap, presses nothing. GUI thread.
class DarkScreen : public QWidget
{
    Q_OBJECT
public:
    explicit DarkScreen(QWidget *window);

    /// Sees every event of the program.
    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void goDark();
    void wake();
    bool swallow(QEvent *event);

    QTimer m_idle;
    QElapsedTimer m_woken; ///< runs from the waking touch on
    bool m_held = false;   ///< a touch that must press nothing is not over
};
