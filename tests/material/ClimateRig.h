#pragma once
// An installation folder with a scripted bridge as COM16 and a settable head library.

#include "scripted/FakeBridge.h"
#include "scripted/climatehib.h"
#include "tests/support/LogCapture.h"
#include "tests/support/TestInstall.h"

#include <QStringList>

class ClimateRig
{
public:
    ClimateRig();
    ~ClimateRig();

    FakeBridge bridge;
    LogCapture log;
    ClimateHib *hib = nullptr;

    /// The texts of a log file's lines, without their times.
    QStringList lines(const QString &file) const;
    /// "board:command" of each request since the record was cleared, in hexadecimal.
    QString commands() const;
    /// The data of each request to a board's command, in hexadecimal.
    QStringList data(int board, int command) const;

private:
    TestInstall m_install;
};
