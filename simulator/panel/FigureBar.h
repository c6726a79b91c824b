#pragma once
// The line at the window's head: machine time and counts, and the boards.

#include <QFrame>
#include <QMap>

class PartRecorder;
class QLabel;

class FigureBar : public QFrame
{
    Q_OBJECT
public:
    FigureBar(double timeScale, QWidget *parent = nullptr);

    void follow(const QJsonObject &state, const PartRecorder &recorder);

private:
    void set(const QString &caption, const QString &text);

    QMap<QString, QLabel *> m_figures; ///< by caption
};
