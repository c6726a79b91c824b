#pragma once
// The last level of each tank of the three heads and the level that counts as full, in the head boards' raw
// units.

#include "platform/Mutex.h"

#include <QJsonObject>
#include <QString>
#include <array>
#include <atomic>

class InkLevels
{
public:
    static constexpr int heads = 3;
    static constexpr int tanks = 2 * heads;

    /// Key of a tank: "Nozzle1_1" (support of head 1), "Nozzle1_3" (structure), "Nozzle2_1" and so on to 5.
    static QString key(int tank);
    /// Reads a head's two tanks. False when the boards gave an error; the values of the failed call count all
    /// the same. Ink service threads.
    bool read(int head);
    int level(int tank) const { return m_levels[size_t(tank)]; }
    /// All six by their keys. Any thread.
    void fill(QJsonObject &levels) const;
    /// All six in the order of the tanks with commas between. Any thread.
    QString text() const;

    /// The full values by the tanks' keys. Any thread, as all from here on.
    void setFull(const QJsonObject &full);
    QJsonObject full() const;
    /// True if any tank is low, logged when that changes. A tank without a full value never is.
    bool checkHeadInkLevels();

private:
    std::array<std::atomic<int>, tanks> m_levels = {};
    std::atomic<bool> m_low{false};
    mutable Mutex m_fullMutex; // the service thread refreshes what the job and the ink services compare with
    QJsonObject m_nozzleFull PELORA_GUARDED_BY(m_fullMutex);
};

/// The process's one set of levels. Any thread.
InkLevels &inkLevels();
