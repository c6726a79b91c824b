#include "Look.h"

#include <QFontMetricsF>
#include <QLineEdit>
#include <QStyle>
#include <QVariant>
#include <QWidget>

namespace look
{
namespace
{
struct Token {
    const char *name;
    QRgb colour;
};
constexpr Token tokens[] = {
    {"@ground", ground}, {"@surface", surface},  {"@raised", raised},   {"@line", line},     {"@text", text},
    {"@quiet", quiet},   {"@accent", structure}, {"@warning", warning}, {"@danger", danger}, {"@good", good}};

constexpr char sheet[] = R"(
QWidget#MachinePanel { background: @ground; }
QWidget { font-family: "Noto Sans"; font-size: 14px; }
QLabel { color: @text; background: transparent; }
QLabel[quiet="true"] { color: @quiet; font-size: 12px; }
QLabel[heading="true"] { color: @quiet; font-size: 13px; font-weight: bold; }
QLabel[figure="true"] { font-size: 17px; font-weight: bold; }
QLabel[alarm="true"] { color: @danger; }
QFrame[card="true"] { background: @surface; border-radius: 10px; }
QScrollArea, QScrollArea > QWidget > QWidget { background: transparent; border: none; }
QPushButton { background: @raised; color: @text; border: 1px solid transparent; border-radius: 7px;
              padding: 4px 10px; font-size: 13px; min-height: 22px; }
QPushButton:pressed { background: #36435a; }
QPushButton:disabled { color: #6b7480; }
QPushButton:focus { border-color: @accent; }
QLineEdit, QComboBox, QAbstractSpinBox { background: @ground; color: @text; border: 1px solid @line;
              border-radius: 6px; padding: 2px 6px; font-size: 13px; min-height: 22px; }
QLineEdit:focus, QComboBox:focus, QAbstractSpinBox:focus { border-color: @accent; }
QComboBox QAbstractItemView { background: @raised; color: @text; selection-background-color: #36435a; }
QPlainTextEdit, QTableWidget { background: @ground; color: @text; border: none; border-radius: 6px;
              font-size: 12px; gridline-color: @line; }
QHeaderView::section { background: @surface; color: @quiet; border: none; padding: 2px 6px; font-size: 12px; }
QScrollBar:vertical { background: transparent; width: 8px; }
QScrollBar::handle:vertical { background: @raised; border-radius: 4px; min-height: 30px; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
QScrollBar::add-line, QScrollBar::sub-line { height: 0; }
QLabel[note="true"] { font-size: 12px; }
QWidget[state="good"] { color: @good; }
QWidget[state="bad"] { color: @danger; }
QWidget[state="warning"] { color: @warning; }
QWidget[state="quiet"] { color: @quiet; }
QLineEdit[state="empty"] { color: #6b7480; }
QToolTip { background: @raised; color: @text; border: 1px solid @line; padding: 4px; }
)";
} // namespace

QString styleSheet()
{
    QString text = QString::fromLatin1(sheet);
    for (const Token &token : tokens)
        text.replace(token.name, QColor(token.colour).name());
    return text;
}

void setState(QWidget *widget, const char *state)
{
    if (widget->property("state").toByteArray() == state)
        return;
    widget->setProperty("state", QByteArray(state));
    widget->style()->unpolish(widget);
    widget->style()->polish(widget);
}

void dimWhenEmpty(QLineEdit *edit)
{
    const auto colour = [edit] { setState(edit, edit->text().isEmpty() ? "empty" : "filled"); };
    QObject::connect(edit, &QLineEdit::textChanged, edit, colour);
    colour();
}

QFont font(int pixels, bool bold)
{
    QFont font(QStringLiteral("Noto Sans"));
    font.setPixelSize(pixels);
    font.setBold(bold);
    return font;
}

void drawText(QPainter &painter, const QRectF &box, int flags, QRgb colour, int pixels, const QString &text,
              bool bold)
{
    const QFont used = font(pixels, bold);
    painter.setFont(used);
    painter.setPen(QColor(colour));
    const bool fits = QFontMetricsF(used).horizontalAdvance(text) <= box.width();
    painter.drawText(box, flags | Qt::TextSingleLine,
                     fits ? text : QFontMetricsF(used).elidedText(text, Qt::ElideRight, box.width()));
}

QString number(double value, bool known, int decimals)
{
    return known ? QString::number(value, 'f', decimals) : QStringLiteral("-");
}
} // namespace look
