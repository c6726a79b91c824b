#pragma once
// The way of the wax: six head tanks, two valve islands, four bottles.

#include <QFrame>
#include <vector>

class BottleView;
class TankView;

class InkView : public QFrame
{
    Q_OBJECT
public:
    explicit InkView(QWidget *parent = nullptr);

    void follow(const QJsonObject &state);

signals:
    void run(const QStringList &words);

private:
    std::vector<TankView *> m_tanks;   ///< head by head, structure before support
    std::vector<TankView *> m_islands; ///< structure, support
    std::vector<BottleView *> m_bottles;
};
