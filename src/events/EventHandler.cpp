#include "events/EventHandler.h"

#include "events/EventTable.h"
#include "events/OperatorMessage.h"
#include "frame/Singleton.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDebug>
#include <QJsonDocument>
#include <QJsonObject>
#include <QThread>

namespace
{
constexpr int announcePeriodMs = 1000;

const QString keyFirst = QStringLiteral("STIME");
const QString keyLast = QStringLiteral("ETIME");
const QString keyCount = QStringLiteral("CNT");
const QString keyMessage = QStringLiteral("MSG");

QString timeText()
{
    return QDateTime::currentDateTime().toString(QStringLiteral("yy/MM/dd hh:mm"));
}

/// A stored record; empty, and said so, when its text is none.
QJsonObject parseRecord(const QString &text)
{
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8());
    if (document.isNull())
        qDebug() << (QStringLiteral("===> please check the string ") + text);
    return document.object();
}

quint32 countOf(const QJsonObject &record)
{
    return quint32(record.value(keyCount).toDouble());
}

QString row(quint32 id, const QString &text)
{
    return QStringLiteral("\"%1\",\"%2\"").arg(messageTitle(id), text);
}
} // namespace

EventHandler *EventHandler::instance()
{
    return singleton<EventHandler>();
}

EventHandler::EventHandler() : m_log("event.csv")
{
    m_timerId = startTimer(announcePeriodMs, Qt::CoarseTimer);
    enterMessages();
}

void EventHandler::enterMessages()
{
    for (int i = 0; i < eventTableSize; ++i)
        m_messages.insert(eventTable[i].id, tr(eventTable[i].text));
    qWarning() << "\n\n=====================show event list======================";
    for (auto it = m_messages.cbegin(); it != m_messages.cend(); ++it)
        qWarning() << QStringLiteral("%1\t:%2").arg(messageTitle(it.key()), it.value());
    qWarning() << "\n\n";
}

quint8 EventHandler::setEvent(quint32 id, const QString &extra)
{
    EventHandler *self = instance();
    self->m_dirty = 1; // also for an unknown id
    MutexLock lock(self->m_mutex);
    const auto message = self->m_messages.constFind(id);
    if (message == self->m_messages.constEnd())
        return 0; // temperature channels that are not connected stay silent this way
    const QString text = message.value() + extra;
    const auto active = self->m_events.constFind(id);
    QJsonObject record;
    if (active != self->m_events.constEnd()) {
        record = parseRecord(active.value());
        record.insert(keyCount, double(countOf(record)) + 1);
    } else {
        self->m_log.writeLine(row(id, text));
        record.insert(keyFirst, timeText());
        record.insert(keyCount, 1);
    }
    record.insert(keyLast, timeText());
    record.insert(keyMessage, text);
    self->m_events.insert(id, QString::fromUtf8(QJsonDocument(record).toJson()));
    return quint8(countOf(record));
}

void EventHandler::clearEvent(quint32 id)
{
    EventHandler *self = instance();
    MutexLock lock(self->m_mutex);
    self->m_dirty = 1;
    const auto active = self->m_events.find(id);
    if (active == self->m_events.end())
        return;
    parseRecord(active.value());
    self->m_events.erase(active);
}

bool EventHandler::isEventActive(quint32 id)
{
    EventHandler *self = instance();
    MutexLock lock(self->m_mutex);
    return self->m_events.contains(id);
}

quint32 EventHandler::eventCount(quint32 id)
{
    EventHandler *self = instance();
    MutexLock lock(self->m_mutex);
    const auto active = self->m_events.constFind(id);
    return active == self->m_events.constEnd() ? 0 : countOf(parseRecord(active.value()));
}

QString EventHandler::eventDetail(quint32 id)
{
    EventHandler *self = instance();
    MutexLock lock(self->m_mutex);
    const auto active = self->m_events.constFind(id);
    if (active == self->m_events.constEnd())
        return tr("该事件未发生");
    const QJsonObject record = parseRecord(active.value());
    QString text = QStringLiteral("\n");
    text += tr("首次发生时间: ") + record.value(keyFirst).toString() + QLatin1Char('\n');
    text += tr("发生次数: %1").arg(countOf(record)) + QLatin1Char('\n');
    text += tr("事件: %1").arg(record.value(keyMessage).toString()) + QLatin1Char('\n');
    return text;
}

QString EventHandler::eventMessage(quint32 id)
{
    return instance()->m_messages.value(id, messageTitle(id));
}

QMap<quint32, QString> EventHandler::activeEvents()
{
    EventHandler *self = instance();
    MutexLock lock(self->m_mutex);
    return self->m_events;
}

void EventHandler::logEvent(quint32 id, const QString &text)
{
    if (!isEventActive(id))
        instance()->m_log.writeLine(row(id, text));
}

void EventHandler::checkEventRange(qint32 value, qint32 setpoint, quint32 id, qint32 band)
{
    if (qint64(value) > qint64(setpoint) + band)
        setEvent(id, tr(" (当前值%1>设定值%2) ").arg(value).arg(setpoint));
    else if (qint64(value) >= qint64(setpoint) - band)
        clearEvent(id);
    else
        setEvent(id, tr(" (当前值%1<设定值%2) ").arg(value).arg(setpoint));
}

void EventHandler::timerEvent(QTimerEvent *)
{
    if (m_dirty == 0)
        return;
    emit eventsChanged();
    m_dirty.exchange(0); // a change during the emit waits for the next one
}
