#include "events/StatusMail.h"

#include "events/EventHandler.h"
#include "events/SendEmail.h"
#include "frame/JsonConfig.h"

namespace
{
const QString reportTime = QStringLiteral("11:30");
constexpr quint32 eventMaintenance = 0x00ffff07;

bool isOn(const char *key)
{
    return emailConfig()->getValue(QLatin1String(key)).toBool();
}

QString bottleLine(const RestWeights &rest)
{
    return QStringLiteral("sup1:%1 g    sup2:%2g     part3:%3g     part4:%4g     ")
        .arg(rest[0])
        .arg(rest[1])
        .arg(rest[2])
        .arg(rest[3]);
}

/// Ids only, one a line: the reader looks them up.
QString eventLines()
{
    const QList<quint32> ids = EventHandler::activeEvents().keys();
    const auto line = [](quint32 id) { return QString::number(id, 16) + QLatin1Char('\n'); };
    const bool maintain = isOn("Maintain");
    QString lines;
    if (maintain && ids.contains(eventMaintenance))
        lines += line(eventMaintenance);
    // Faults need both flags: who does not want maintenance in the mail gets the bottles alone.
    if (maintain && isOn("Error")) {
        for (const quint32 id : ids) {
            if (id != eventMaintenance)
                lines += line(id);
        }
    }
    return lines;
}
} // namespace

StatusMail::StatusMail(std::function<RestWeights()> restWeights, std::function<QTime()> clock)
    : m_restWeights(std::move(restWeights)), m_clock(std::move(clock))
{
}

bool StatusMail::isTime() const
{
    return m_clock().toString(QStringLiteral("hh:mm")) == reportTime;
}

/// Never empty, so that a mail goes out every day: its coming tells that the machine is alive.
QString StatusMail::body() const
{
    const QString bottles = isOn("Ink") ? bottleLine(m_restWeights()) : QString();
    return bottles + QLatin1Char('\n') + eventLines();
}

void StatusMail::pass()
{
    if (m_armed && isTime()) {
        m_armed = false; // also when the mail fails: it is not tried again
        SendEmail(QStringLiteral("Pelora"), body());
    }
    if (!isTime())
        m_armed = true;
}
