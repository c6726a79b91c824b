#include "forms/TrendPlot.h"

#include <QDateTime>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <limits>

namespace
{
const QColor surface(0x1b, 0x21, 0x28);
const QColor lineColour(0x2b, 0x33, 0x3d);
const QColor textColour(0xee, 0xf2, 0xf6);
const QColor quietText(0x9a, 0xa5, 0xb1);
const QColor eventColour(0xff, 0xd3, 0x4d);
const QColor curveColours[] = {QColor(0xf2, 0xa3, 0x3c), QColor(0x4a, 0xa3, 0xdf), QColor(0x4c, 0xc3, 0x8a),
                               QColor(0xff, 0x7a, 0x7d), QColor(0xff, 0xd3, 0x4d), QColor(0xee, 0xf2, 0xf6),
                               QColor(0x9a, 0xa5, 0xb1)};
constexpr int colours = int(sizeof curveColours / sizeof *curveColours);

constexpr int fontPixels = 15;
constexpr int margin = 12;
constexpr int legendRow = 20;
constexpr int legendRows = 3;
constexpr int labelWidth = 52;  ///< values on the left
constexpr int numberWidth = 20; ///< curve numbers on the right
constexpr int hourHeight = 22;
constexpr int hoursApart = 4;
constexpr int eventLength = 8;
constexpr int gridLines = 4;
constexpr qint64 hourMs = 60 * 60 * 1000;

QColor colourOf(int curve)
{
    return curveColours[curve % colours];
}

/// 1, 2 or 5 with zeros: at least a `gridLines`th of the range.
int niceStep(int range)
{
    for (int unit = 1; unit < 1000000; unit *= 10)
        for (int times : {1, 2, 5})
            if (times * unit * gridLines >= range)
                return times * unit;
    return 1000000;
}

int floorTo(int value, int step)
{
    return (value < 0 ? (value - step + 1) / step : value / step) * step;
}
} // namespace

TrendPlot::TrendPlot(QWidget *parent) : QWidget(parent) {}

void TrendPlot::setCurves(const QVector<PlotCurve> &curves, const QString &unit)
{
    m_curves = curves;
    m_unit = unit;
    rescale();
    update();
}

void TrendPlot::setTime(qint64 endMs, const QVector<TrendEvent> &events)
{
    m_endMs = endMs;
    m_events = events;
    update();
}

void TrendPlot::setCursorTime(qint64 timeMs)
{
    m_cursorMs = timeMs;
    update();
}

bool TrendPlot::hasData() const
{
    return std::any_of(m_curves.begin(), m_curves.end(), [](const PlotCurve &c) { return c.curve.hasData; });
}

void TrendPlot::rescale()
{
    int low = std::numeric_limits<int>::max(), high = std::numeric_limits<int>::min();
    const auto take = [&](int value) {
        low = std::min(low, value);
        high = std::max(high, value);
    };
    for (const PlotCurve &shown : m_curves) {
        for (const TrendBucket &bucket : shown.curve.buckets) {
            if (!bucket.isFilled)
                continue;
            take(bucket.low);
            take(bucket.high);
            if (shown.hasSets)
                take(bucket.set);
        }
        if (shown.hasConstant && shown.curve.hasData)
            take(shown.constant);
    }
    if (low > high)
        return;
    m_scale.step = niceStep(std::max(1, high - low));
    m_scale.low = floorTo(low, m_scale.step);
    m_scale.high = std::max(floorTo(high + m_scale.step - 1, m_scale.step), m_scale.low + m_scale.step);
}

int TrendPlot::legendColumns() const
{
    return m_curves.size() > 2 * legendRows ? 3 : 2;
}

QRect TrendPlot::area() const
{
    return rect().adjusted(margin + labelWidth, margin + legendRows * legendRow + eventLength,
                           -margin - numberWidth, -margin / 2 - hourHeight);
}

qreal TrendPlot::xOf(qint64 timeMs) const
{
    return area().left() + area().width() * qreal(timeMs - m_endMs + trendSpanMs) / qreal(trendSpanMs);
}

qreal TrendPlot::xOfBucket(int bucket) const
{
    return area().left() + area().width() * (bucket + 0.5) / trendBuckets;
}

qreal TrendPlot::yOf(int value) const
{
    return area().bottom() - area().height() * qreal(value - m_scale.low) / (m_scale.high - m_scale.low);
}

void TrendPlot::mousePressEvent(QMouseEvent *event)
{
    const qreal share = qreal(event->x() - area().left()) / area().width();
    if (m_endMs)
        emit touched(m_endMs - trendSpanMs + qint64(qBound(0.0, share, 1.0) * trendSpanMs));
}

void TrendPlot::mouseMoveEvent(QMouseEvent *event)
{
    mousePressEvent(event);
}

void TrendPlot::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath card;
    card.addRoundedRect(rect(), 14, 14);
    painter.fillPath(card, surface);
    QFont small = font();
    small.setPixelSize(fontPixels);
    painter.setFont(small);
    if (m_endMs == 0)
        return; // not read yet
    if (!hasData()) {
        painter.setPen(quietText);
        painter.drawText(rect(), Qt::AlignCenter, tr("没有数据"));
        return;
    }
    paintAxes(&painter);
    paintEvents(&painter);
    for (int i = 0; i < m_curves.size(); ++i)
        paintSets(&painter, m_curves[i], colourOf(i));
    for (int i = 0; i < m_curves.size(); ++i)
        paintCurve(&painter, m_curves[i], colourOf(i));
    paintNumbers(&painter);
    paintLegend(&painter);
}

void TrendPlot::paintAxes(QPainter *painter)
{
    const QRect plot = area();
    for (int value = m_scale.low; value <= m_scale.high; value += m_scale.step) {
        const qreal y = yOf(value);
        painter->setPen(lineColour);
        painter->drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
        painter->setPen(quietText);
        painter->drawText(QRectF(margin, y - 10, labelWidth - 6, 20), Qt::AlignRight | Qt::AlignVCenter,
                          QString::number(value));
    }
    QDateTime hour = QDateTime::fromMSecsSinceEpoch(m_endMs - trendSpanMs);
    hour.setTime(QTime(hour.time().hour() / hoursApart * hoursApart, 0));
    for (; hour.toMSecsSinceEpoch() <= m_endMs; hour = hour.addMSecs(hoursApart * hourMs)) {
        const qreal x = xOf(hour.toMSecsSinceEpoch());
        if (x < plot.left())
            continue;
        painter->setPen(lineColour);
        painter->drawLine(QPointF(x, plot.top()), QPointF(x, plot.bottom()));
        painter->setPen(quietText);
        painter->drawText(QRectF(x - 30, plot.bottom() + 2, 60, hourHeight), Qt::AlignCenter,
                          hour.toString(QStringLiteral("hh:mm")));
    }
}

/// A mark above the plot for each event, and the line of the time that was touched.
void TrendPlot::paintEvents(QPainter *painter)
{
    const QRect plot = area();
    painter->setPen(QPen(eventColour, 3));
    for (const TrendEvent &event : qAsConst(m_events))
        painter->drawLine(QPointF(xOf(event.timeMs), plot.top() - eventLength),
                          QPointF(xOf(event.timeMs), plot.top()));
    if (m_cursorMs < m_endMs - trendSpanMs || m_cursorMs > m_endMs)
        return;
    painter->setPen(QPen(textColour, 1));
    painter->drawLine(QPointF(xOf(m_cursorMs), plot.top()), QPointF(xOf(m_cursorMs), plot.bottom()));
}

void TrendPlot::paintSets(QPainter *painter, const PlotCurve &shown, const QColor &colour)
{
    painter->setPen(QPen(colour, 1, Qt::DashLine));
    if (shown.hasConstant && shown.curve.hasData)
        painter->drawLine(QPointF(area().left(), yOf(shown.constant)),
                          QPointF(area().right(), yOf(shown.constant)));
    if (!shown.hasSets)
        return;
    QPainterPath path;
    bool isOpen = false;
    for (int i = 0; i < trendBuckets; ++i) {
        const TrendBucket &bucket = shown.curve.buckets[size_t(i)];
        const QPointF point(xOfBucket(i), yOf(bucket.set));
        if (bucket.isFilled)
            isOpen ? path.lineTo(point) : path.moveTo(point);
        isOpen = bucket.isFilled;
    }
    painter->drawPath(path);
}

/// From the least to the most of each stretch of time: short peaks stay. Where nothing was measured the curve
/// has a gap.
void TrendPlot::paintCurve(QPainter *painter, const PlotCurve &shown, const QColor &colour)
{
    QPainterPath path;
    bool isOpen = false;
    for (int i = 0; i < trendBuckets; ++i) {
        const TrendBucket &bucket = shown.curve.buckets[size_t(i)];
        if (bucket.isFilled) {
            const QPointF low(xOfBucket(i), yOf(bucket.low) + 0.5);
            isOpen ? path.lineTo(low) : path.moveTo(low);
            path.lineTo(QPointF(low.x(), yOf(bucket.high) - 0.5));
        }
        isOpen = bucket.isFilled;
    }
    painter->setPen(QPen(colour, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->drawPath(path);
}

/// The curves' numbers at their ends, pushed apart where curves meet.
void TrendPlot::paintNumbers(QPainter *painter)
{
    QVector<QPair<qreal, int>> ends;
    for (int i = 0; i < m_curves.size(); ++i)
        if (const TrendBucket *newest = m_curves[i].curve.newest())
            ends << qMakePair(yOf(newest->last), i);
    std::sort(ends.begin(), ends.end());
    qreal free = area().top() - 6;
    for (int i = 0; i < ends.size(); ++i) {
        const qreal rest = area().bottom() + 6 - (ends.size() - 1 - i) * fontPixels;
        const qreal y = qMin(qMax(ends[i].first, free), rest);
        free = y + fontPixels;
        painter->setPen(colourOf(ends[i].second));
        painter->drawText(QRectF(area().right() + 4, y - 10, numberWidth, 20), Qt::AlignVCenter,
                          QString::number(ends[i].second + 1));
    }
}

QString TrendPlot::valueText(const PlotCurve &shown) const
{
    const TrendBucket *bucket = shown.curve.newest();
    if (m_cursorMs) {
        const qint64 since = m_cursorMs - (m_endMs - trendSpanMs);
        const int at = int(qBound(qint64{0}, since * trendBuckets / trendSpanMs, qint64{trendBuckets - 1}));
        bucket = &shown.curve.buckets[size_t(at)];
    }
    return bucket && bucket->isFilled ? QString::number(bucket->last) + m_unit : QStringLiteral("–");
}

void TrendPlot::paintLegend(QPainter *painter)
{
    const int columns = legendColumns();
    const int width = (rect().width() - 2 * margin) / columns;
    const QFontMetrics metrics(painter->font());
    for (int i = 0; i < m_curves.size(); ++i) {
        const QRect cell(margin + i % columns * width, margin / 2 + i / columns * legendRow, width - 28,
                         legendRow);
        const QString value = valueText(m_curves[i]);
        const QString name = QStringLiteral("%1  %2").arg(i + 1).arg(m_curves[i].name);
        const int valueWidth = metrics.horizontalAdvance(value) + 8;
        painter->setPen(colourOf(i));
        painter->drawText(cell, Qt::AlignLeft | Qt::AlignVCenter,
                          metrics.elidedText(name, Qt::ElideMiddle, cell.width() - valueWidth));
        painter->setPen(textColour);
        painter->drawText(cell, Qt::AlignRight | Qt::AlignVCenter, value);
    }
}
