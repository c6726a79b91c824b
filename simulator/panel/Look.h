#pragma once
// Colours and the style sheet of the panel.

#include <QColor>
#include <QFont>
#include <QPainter>
#include <QString>

class QLineEdit;
class QWidget;

namespace look
{
constexpr QRgb ground = 0xFF12161B;
constexpr QRgb surface = 0xFF1B2128;
constexpr QRgb raised = 0xFF263041;
constexpr QRgb line = 0xFF2B333D;
constexpr QRgb text = 0xFFEEF2F6;
constexpr QRgb quiet = 0xFF9AA5B1;
constexpr QRgb structure = 0xFFF2A33C; ///< the accent, too
constexpr QRgb support = 0xFF4AA3DF;
constexpr QRgb warning = 0xFFFFD34D;
constexpr QRgb danger = 0xFFFF7A7D;
constexpr QRgb good = 0xFF4CC38A;

QString styleSheet();
/// Colours a label, button or answer by a word of the style sheet: good, bad, warning, quiet.
void setState(QWidget *widget, const char *state);
/// What an empty input asks for shall not look like something entered.
void dimWhenEmpty(QLineEdit *edit);
/// Digits of equal width, so that changing numbers stand still.
QFont font(int pixels, bool bold = false);
/// Text on one line in a box, shortened with dots where it does not fit.
void drawText(QPainter &painter, const QRectF &box, int flags, QRgb colour, int pixels, const QString &text,
              bool bold = false);
/// A number, or "-" where the machine does not tell it.
QString number(double value, bool known, int decimals = 0);
} // namespace look
