#pragma once
// The machine, drawn from the front and from above, and the part on a scale of its own.

#include "PartSketch.h"

#include <QJsonObject>
#include <QWidget>

class QPainter;

class MachineView : public QWidget
{
    Q_OBJECT
public:
    explicit MachineView(QWidget *parent = nullptr);

    /// `state` as the machine tells it; `firing`: a page is placed and not yet fired.
    void follow(const QJsonObject &state, bool firing, const PartRecorder &recorder);
    QSize minimumSizeHint() const override { return {640, 240}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void drawFront(QPainter &painter, const QRectF &box) const;
    void drawBed(QPainter &painter, const QRectF &box, double plane, double scale) const;
    void drawCarriage(QPainter &painter, double x, double top) const;
    void drawStack(QPainter &painter, double x, double top) const;
    void drawAbove(QPainter &painter, const QRectF &box) const;
    void drawSweep(QPainter &painter, const QPointF &at) const;
    void drawPart(QPainter &painter, const QRectF &box) const;
    void drawFacts(QPainter &painter, const QRectF &box) const;
    double number(const char *key) const { return m_state[QLatin1String(key)].toDouble(); }
    double carriageX() const; ///< micrometres
    bool moving() const;

    QJsonObject m_state;
    PartSketch m_sketch;
    double m_lastX = 0;
    bool m_right = true; ///< where the carriage went last
    bool m_firing = false;
};
