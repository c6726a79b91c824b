#pragma once
// The touch screen's keyboard.

#include <QWidget>

namespace Tactil
{
/// Lies over the lower part of its parent and types into the edit box that has the focus. GUI thread.
class Keyboard : public QWidget
{
    Q_OBJECT
public:
    explicit Keyboard(QWidget *parent = nullptr);
};
} // namespace Tactil
