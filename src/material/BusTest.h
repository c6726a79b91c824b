#pragma once
// The test of the machine boards on the bus, about once a minute.

#include <QString>

/// Counts calls and tests on the first and every 120th after it. Service thread.
class BusTest
{
public:
    /// Probes the boards 2, 3, 5 and 6 when it is time to. A board that fails is filtered until a later test
    /// finds it again. The numbers of the failed boards with commas between, empty when all are well.
    QString testCan();

private:
    QString probeAll();
    bool probe(quint8 board) const;

    unsigned m_calls = 0;
    bool m_recorded = false; ///< every board's first answer is in the log
};
