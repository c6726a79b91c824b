#pragma once
// The machine's numbered events: dictionary, what is active now, and event.csv.

#include "frame/RotatingLog.h"
#include "platform/Mutex.h"

#include <QMap>
#include <QObject>
#include <QString>
#include <atomic>

class EventHandler : public QObject
{
    Q_OBJECT
public:
    /// Create it on the GUI thread before any service starts: its timer lives there.
    static EventHandler *instance();
    EventHandler();

    /// Raises one occurrence; the low 8 bits of the count since it became active. Unknown ids give 0. Any
    /// thread, as every static here.
    static quint8 setEvent(quint32 id, const QString &extra);
    static void clearEvent(quint32 id);
    static bool isEventActive(quint32 id);
    static quint32 eventCount(quint32 id);
    /// Text for the operator: first time, count, message; one sentence when the event is not active.
    static QString eventDetail(quint32 id);
    /// Dictionary text, or the id as 8 hexadecimal digits.
    static QString eventMessage(quint32 id);
    /// Snapshot: id to a JSON text with STIME, ETIME, CNT, MSG.
    static QMap<quint32, QString> activeEvents();
    /// Writes a row to event.csv unless the id is active.
    static void logEvent(quint32 id, const QString &text);
    /// Raises or clears by comparison; value equal to setpoint plus or minus band clears.
    static void checkEventRange(qint32 value, qint32 setpoint, quint32 id, qint32 band);

signals:
    /// At most once a second, when anything changed. GUI thread.
    void eventsChanged();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void enterMessages();

    QMap<quint32, QString> m_events PELORA_GUARDED_BY(m_mutex);
    Mutex m_mutex; // job, service and GUI threads raise and read
    RotatingLog m_log;
    QMap<quint32, QString> m_messages; // never changed after construction
    std::atomic<quint8> m_dirty{1};
    int m_timerId = 0;
};
