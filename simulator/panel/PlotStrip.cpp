#include "PlotStrip.h"

#include "Look.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace
{
constexpr double leastRange = 10; ///< so that noise does not fill the plot
constexpr double visible = 0.05;  ///< a smaller change is not seen
constexpr int textHeight = 17, valueWidth = 32;
} // namespace

void History::add(double seconds, double value)
{
    if (m_samples.empty() || seconds - m_samples.back().first >= pause)
        m_samples.emplace_back(seconds, value);
    while (m_samples.front().first < seconds - span)
        m_samples.pop_front();
}

PlotStrip::PlotStrip(const QString &title, QRgb colour, QWidget *parent)
    : QWidget(parent), m_title(title), m_colour(colour)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setToolTip(title);
}

void PlotStrip::add(double seconds, double reading, double setPoint)
{
    m_history.add(seconds, reading);
    const bool same = std::abs(reading - m_reading) < visible && setPoint == m_setPoint;
    const auto &samples = m_history.samples();
    const bool level = same && std::all_of(samples.begin(), samples.end(), [reading](const auto &sample) {
                           return std::abs(sample.second - reading) < visible;
                       });
    m_now = seconds;
    m_reading = reading;
    m_setPoint = setPoint;
    if (!level || !m_level)
        update();
    m_level = level;
}

void PlotStrip::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRectF box(0, textHeight, width(), height() - textHeight - 2);
    const QString value = QString::number(m_reading, 'f', std::abs(m_reading) < 99.95 ? 1 : 0);
    look::drawText(painter, QRectF(0, 0, width() - valueWidth, textHeight), Qt::AlignVCenter, look::quiet, 11,
                   m_title);
    look::drawText(painter, QRectF(width() - valueWidth, 0, valueWidth, textHeight),
                   Qt::AlignVCenter | Qt::AlignRight, look::text, 12, value);
    painter.fillRect(box, QColor(look::ground));
    double low = std::min(m_reading, m_setPoint), high = std::max(m_reading, m_setPoint);
    for (const auto &sample : m_history.samples()) {
        low = std::min(low, sample.second);
        high = std::max(high, sample.second);
    }
    const double spare = std::max(0.0, leastRange - (high - low)) / 2 + (high - low) * 0.08;
    low -= spare;
    high += spare;
    const auto at = [&](double seconds, double reading) {
        return QPointF(box.right() - (m_now - seconds) / History::span * box.width(),
                       box.bottom() - (reading - low) / (high - low) * box.height());
    };
    painter.setPen(QPen(QColor(look::quiet), 1, Qt::DotLine));
    painter.drawLine(QPointF(box.left(), at(0, m_setPoint).y()), QPointF(box.right(), at(0, m_setPoint).y()));
    QPolygonF course;
    for (const auto &sample : m_history.samples())
        course << at(sample.first, sample.second);
    course << at(m_now, m_reading);
    painter.setPen(QPen(QColor(m_colour), 1.5));
    painter.drawPolyline(course);
}
