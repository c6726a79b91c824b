#pragma once
// One click for what is done most: doors and platform. Each button tells the present state.

#include <QFrame>
#include <vector>

class QPushButton;

class QuickControls : public QFrame
{
    Q_OBJECT
public:
    explicit QuickControls(QWidget *parent = nullptr);

    void follow(const QJsonObject &state);

signals:
    void run(const QStringList &words);

private:
    std::vector<QPushButton *> m_buttons; ///< by row of the table of switches
    std::vector<bool> m_usual;            ///< closed, seated
};
