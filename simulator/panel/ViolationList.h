#pragma once
// The machine's violations: how many, and each with its time, name and detail.

#include <QFrame>

class QLabel;
class QTableWidget;
class Violations;

class ViolationList : public QFrame
{
    Q_OBJECT
public:
    explicit ViolationList(QWidget *parent = nullptr);

    void follow(const Violations &violations);
    int rows() const;

private:
    QLabel *m_heading;
    QTableWidget *m_table;
    int m_count = -1;
};
