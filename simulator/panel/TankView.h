#pragma once
// A tank or a valve island: a bar, its title, what it holds in grams and the raw level where there is one.

#include <QWidget>

class TankView : public QWidget
{
    Q_OBJECT
public:
    TankView(const QString &title, QRgb colour, QWidget *parent = nullptr);

    /// `share` 0 to 1; `words` say it in numbers; `note` is a mark such as "demand", shown as a warning.
    void set(double share, const QString &words, const QString &note);
    QSize minimumSizeHint() const override { return {38, 110}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_title;
    QRgb m_colour;
    double m_share = 0;
    QString m_words;
    QString m_note;
};
