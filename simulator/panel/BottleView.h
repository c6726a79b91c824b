#pragma once
// One bottle with its card, and a button that pulls it or puts one in.

#include <QJsonObject>
#include <QWidget>

class QPushButton;

class BottleView : public QWidget
{
    Q_OBJECT
public:
    explicit BottleView(int position, QWidget *parent = nullptr);

    /// Its entry of the machine's state; empty as long as the machine tells none.
    void set(const QJsonObject &bottle);
    QSize minimumSizeHint() const override { return {96, 150}; }

signals:
    void run(const QStringList &words);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString text(const char *key, const QString &unit = {}) const;

    int m_position;
    QJsonObject m_bottle;
    QPushButton *m_button;
};
