#pragma once
// Set-points of every heated zone, what was measured, and the events of what deviates.

#include <QObject>

class TempCtl : public QObject
{
    Q_OBJECT
public:
    TempCtl();
    /// 0 start, 1 printing, 2 keep-warm. Sends the set-points to head boards and machine boards. Any thread.
    void setMode(quint8 mode);
    /// One round of reading, sampling and comparing. Service thread.
    void periodic();
    /// True when no temperature event that a print depends on is active. Any thread.
    bool isTempReady() const;

signals:
    void tempStatus(int mode);
};

TempCtl *tempCtl();
