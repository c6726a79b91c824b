#pragma once
// Which faults are switched on, for whoever looks: noted from the commands that did it, whoever gave them.

#include <QMap>
#include <QStringList>

class QJsonObject;
struct Command;

class FaultRegister
{
public:
    /// A fault command that was carried out. Those that cannot be switched off again are not kept.
    void note(const Command &command, const QStringList &words);
    /// Drops what has mended itself: a card whose bottle was exchanged, or whose refused writes are used up.
    void follow(const QJsonObject &state);
    /// As they were given: "silence 3 on", "frames drop 0.5".
    QStringList active() const { return m_active.values(); }

private:
    QMap<QString, QString> m_active; ///< by what the fault is at
};
