#pragma once
// All temperatures, pressures and the leveller's speed in rows of strips.

#include <QMap>
#include <QWidget>

class Climate;
class PlotStrip;
class QGridLayout;

class ClimateView : public QWidget
{
    Q_OBJECT
public:
    explicit ClimateView(Climate &climate, QWidget *parent = nullptr);

    /// Takes the readings of this moment.
    void follow(double seconds);

private:
    void addHead(QGridLayout *grid, int row, int head);
    void addStrip(QGridLayout *grid, int row, int column, const QString &name, const QString &title);
    void addRest(QGridLayout *grid, int row);

    Climate &m_climate;
    QMap<QString, PlotStrip *> m_strips;
};
