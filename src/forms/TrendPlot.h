#pragma once
// One plot of a day: curves with their set-points, hours, marks of events, names and values.

#include "forms/TrendData.h"

#include <QColor>
#include <QWidget>

struct PlotCurve {
    QString name;
    TrendCurve curve;
    bool hasSets = false;     ///< the curve's buckets hold set-points
    bool hasConstant = false; ///< one set-point for the whole day
    int constant = 0;
};

/// GUI thread.
class TrendPlot : public QWidget
{
    Q_OBJECT
public:
    explicit TrendPlot(QWidget *parent = nullptr);
    void setCurves(const QVector<PlotCurve> &curves, const QString &unit);
    void setTime(qint64 endMs, const QVector<TrendEvent> &events);
    /// The time whose values are shown; 0: the newest.
    void setCursorTime(qint64 timeMs);

signals:
    void touched(qint64 timeMs);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    struct Scale {
        int low = 0, high = 1, step = 1;
    };
    bool hasData() const;
    void rescale();
    QRect area() const;
    int legendColumns() const;
    qreal xOf(qint64 timeMs) const;
    qreal xOfBucket(int bucket) const;
    qreal yOf(int value) const;
    QString valueText(const PlotCurve &shown) const;
    void paintAxes(QPainter *painter);
    void paintEvents(QPainter *painter);
    void paintSets(QPainter *painter, const PlotCurve &shown, const QColor &colour);
    void paintCurve(QPainter *painter, const PlotCurve &shown, const QColor &colour);
    void paintNumbers(QPainter *painter);
    void paintLegend(QPainter *painter);

    QVector<PlotCurve> m_curves;
    QVector<TrendEvent> m_events;
    QString m_unit;
    qint64 m_endMs = 0;
    qint64 m_cursorMs = 0;
    Scale m_scale;
};
