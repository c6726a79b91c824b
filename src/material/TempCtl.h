#pragma once
// Set-points of every heated zone, what was measured, and the events of what deviates.

#include "material/TempTable.h"
#include "platform/Mutex.h"

#include <QElapsedTimer>
#include <QObject>
#include <array>

/// The set-points of one mode as the remote client reads and writes them.
struct TempProfile {
    struct Group {
        quint8 board = 0;
        quint8 command = 0;
        std::array<quint8, tempZonesPerGroup> degrees = {};
    };
    quint8 row = 0; ///< 0 to 2: the modes; 3: what was measured last
    std::array<quint8, tempHeadBytes> heads = {};
    std::array<Group, tempGroups> groups;
};

class TempCtl : public QObject
{
    Q_OBJECT
public:
    /// Loads config/temp.bin and heads temp.csv.
    TempCtl();
    /// 0 start, 1 printing, 2 keep-warm. Sends the set-points to head boards and machine boards. Any thread.
    void setMode(quint8 mode);
    /// The mode in force. Any thread.
    quint8 mode() const;
    /// One round of reading, sampling and comparing. Service thread.
    void periodic();
    /// The round at `nowMs` of a steady clock.
    void periodicAt(qint64 nowMs);
    /// True when no temperature event that a print depends on is active. Any thread.
    bool isTempReady() const;

    /// Reads the head temperatures anew and fills `out` with the row that its `row` asks for. Any thread.
    void getTable(TempProfile &out);
    /// Takes a mode's degrees over, saves config/temp.bin, and sends them when the mode is in force. Any
    /// thread.
    void setTable(const TempProfile &in);

    /// config/temp.bin. True: failed.
    bool getTempFile();
    bool saveTempFile() const;

signals:
    void tempStatus(int mode);

private:
    TempTable tableCopy() const;
    void writeCsvHeader() const;
    bool sampleDue(qint64 nowMs);
    QString readGroups();
    QString compareGroup(int group, const TempTable &table, int mode) const;
    void refreshHeadTemps();
    void leaveStartMode(qint64 nowMs);

    // Service, job and network threads set and read the table; never held across a message or a head library
    // call.
    mutable Mutex m_mutex;
    TempTable m_table PELORA_GUARDED_BY(m_mutex);
    quint8 m_mode PELORA_GUARDED_BY(m_mutex) = 0;

    // Service thread only.
    QElapsedTimer m_clock;
    qint64 m_firstRoundMs = -1;
    qint64 m_lastSampleMs = 0;
    qint64 m_minutesToReady = 0;
};

TempCtl *tempCtl();
