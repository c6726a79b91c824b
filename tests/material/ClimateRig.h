#pragma once
// An installation folder with a scripted bridge as COM16 and, unless left out, a settable head library.

#include "tests/material/climatehib.h"
#include "tests/support/FakeBridge.h"
#include "tests/support/LogCapture.h"
#include "tests/support/TestInstall.h"

#include <QStringList>

/// One per test program, before any of the program's singletons: it sets the working directory.
class ClimateRig
{
public:
    enum Parts { Everything, NothingThere };
    explicit ClimateRig(Parts parts = Everything);
    ~ClimateRig();

    FakeBridge &bridge() { return m_bridge; }
    ClimateHib &hib() { return *m_hib; }
    void openBridge();

    LogCapture &log() { return m_log; }
    /// Waits until such a line was logged; false after 900 ms. Any thread.
    bool waitForLog(const QString &part) const;
    /// The texts of a log file's lines, without their times.
    QStringList lines(const QString &file) const;
    /// "board:command" of each request since the record was cleared, in hexadecimal.
    QString commands();
    /// The data of each request to a board's command, in hexadecimal.
    QStringList data(int board, int command);

private:
    TestInstall m_install;
    FakeBridge m_bridge;
    ClimateHib *m_hib = nullptr;
    LogCapture m_log;
};
