#include "keyboard/Keyboard.h"

namespace Tactil
{
Keyboard::Keyboard(QWidget *parent) : QWidget(parent) {}
} // namespace Tactil
