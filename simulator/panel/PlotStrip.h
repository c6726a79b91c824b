#pragma once
// One measured quantity: its name, its reading, and its course over the last ten machine minutes with the
// set-point.

#include <QWidget>
#include <deque>

/// Readings over time; thinned, because a plot of a hundred pixels shows no more.
class History
{
public:
    static constexpr double span = 600;  ///< machine seconds
    static constexpr double pause = 4.5; ///< machine seconds between two samples that are kept

    void add(double seconds, double value);
    const std::deque<std::pair<double, double>> &samples() const { return m_samples; }

private:
    std::deque<std::pair<double, double>> m_samples;
};

class PlotStrip : public QWidget
{
    Q_OBJECT
public:
    PlotStrip(const QString &title, QRgb colour, QWidget *parent = nullptr);

    void add(double seconds, double reading, double setPoint);
    QSize sizeHint() const override { return {108, 46}; }
    QSize minimumSizeHint() const override { return {70, 46}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_title;
    QRgb m_colour;
    History m_history;
    double m_now = 0;
    double m_reading = 0;
    double m_setPoint = 0;
    bool m_level = false; ///< the whole course is one value, and shown
};
