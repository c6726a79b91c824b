#include "forms/WrapLabel.h"

#include <QPainter>
#include <QTextDocument>
#include <QTextLayout>
#include <QtMath>
#include <utility>

namespace
{
constexpr int naturalWidth = 320; ///< what the label asks for before a layout has given it a width

/// Breaks `layout`'s text into lines of `width`, aligned as told, as many as fit into `height`.
/// Returns the height they take and the number of the last line.
std::pair<qreal, int> breakLines(QTextLayout &layout, Qt::Alignment alignment, qreal width, qreal height)
{
    QTextOption option(alignment & Qt::AlignHorizontal_Mask);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    qreal y = 0;
    int last = -1;
    for (;;) {
        QTextLine line = layout.createLine();
        if (!line.isValid())
            break;
        line.setLineWidth(width);
        if (last >= 0 && y + line.height() > height + 1)
            break;
        line.setPosition({0, y});
        y += line.height();
        ++last;
    }
    layout.endLayout();
    return {y, last};
}

/// Quiet captions on the left, values on the right, a row as high as a line of the lists.
void layTable(QTextDocument &table, const QString &text, const QFont &font, int width)
{
    table.setDocumentMargin(0);
    table.setDefaultFont(font);
    table.setDefaultStyleSheet(QStringLiteral("td { color: #9aa5b1; padding: 6px 0 } "
                                              "td[align=\"right\"] { color: #eef2f6 }"));
    table.setHtml(text);
    table.setTextWidth(width);
}

/// QTextLayout knows one line break alone.
QString layoutText(QString text)
{
    return text.replace(QLatin1Char('\n'), QChar::LineSeparator);
}
} // namespace

WrapLabel::WrapLabel(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

int WrapLabel::heightForWidth(int width) const
{
    if (isTable()) {
        QTextDocument table;
        layTable(table, text(), font(), width);
        return qCeil(table.size().height());
    }
    QTextLayout layout(layoutText(text()), font());
    return qCeil(breakLines(layout, alignment(), width, QWIDGETSIZE_MAX).first);
}

QSize WrapLabel::sizeHint() const
{
    const int width = qMax(naturalWidth, this->width());
    return {width, heightForWidth(width)};
}

QSize WrapLabel::minimumSizeHint() const
{
    return {naturalWidth / 2, fontMetrics().height()};
}

bool WrapLabel::isTable() const
{
    return textFormat() == Qt::AutoText && text().startsWith(QLatin1String("<table"));
}

void WrapLabel::paintTable(const QRect &area)
{
    QTextDocument table;
    layTable(table, text(), font(), area.width());
    QPainter painter(this);
    painter.translate(area.topLeft());
    table.drawContents(&painter);
}

void WrapLabel::paintEvent(QPaintEvent *)
{
    const QRect area = contentsRect();
    if (isTable())
        return paintTable(area);
    const QString whole = layoutText(text());
    QTextLayout layout(whole, font());
    const auto [height, last] = breakLines(layout, alignment(), area.width(), area.height());
    if (last < 0)
        return;
    qreal y = area.top();
    if (alignment() & Qt::AlignVCenter)
        y += (area.height() - height) / 2;
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    const QTextLine end = layout.lineAt(last);
    const bool isCut = end.textStart() + end.textLength() < whole.size();
    for (int i = 0; i < last + (isCut ? 0 : 1); ++i)
        layout.lineAt(i).draw(&painter, {qreal(area.left()), y});
    if (!isCut)
        return;
    const QString rest = fontMetrics().elidedText(whole.mid(end.textStart()), Qt::ElideRight, area.width());
    const QRectF row(area.left(), y + end.y(), area.width(), end.height());
    painter.drawText(row, int(alignment() & Qt::AlignHorizontal_Mask) | Qt::AlignVCenter | Qt::TextSingleLine,
                     rest);
}
