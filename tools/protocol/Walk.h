#pragma once
// Walks sessions against a running program, and remembers what the document shows. One thread.

#include "Document.h"
#include "Session.h"
#include "Wire.h"

#include <QStringList>
#include <functional>

struct WalkSite {
    QString install; ///< installation folder of the program
    quint16 port = 0;
    QString machineName;                ///< which of the programs that answer a scan is meant
    std::function<QJsonObject()> state; ///< the simulated machine's
};

class Walk
{
public:
    explicit Walk(const WalkSite &site) : m_site(site) {}

    /// Walks a session file, past what fails.
    void walk(const QString &file);
    /// A line each.
    const QStringList &errors() const { return m_errors; }
    const QVector<Exchange> &exchanges() const { return m_exchanges; }

private:
    QString run(const SessionStep &step);
    QString exchange(const SessionStep &step, Exchange *shown);
    QString silence(const SessionStep &step);
    QByteArray answer(const SessionStep &step);
    QByteArray scanAnswer(const SessionStep &step);
    QString judge(const SessionStep &step, const QByteArray &reply, const QJsonObject &keys, Exchange *shown);
    QString judgePayload(const SessionStep &step, const QByteArray &payload, const QJsonObject &keys,
                         QByteArray *stable);
    QString afterwards(const SessionStep &step, const QJsonObject &check, const QByteArray &before);

    WalkSite m_site;
    Wire m_wire;
    quint16 m_probe = 0; ///< heart beats sent to prove that nothing came
    QStringList m_errors;
    QVector<Exchange> m_exchanges;
};
