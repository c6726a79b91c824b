#pragma once
// An installation folder with a scripted bridge as COM16, four bottles behind a card reader as COM5, and a
// settable head library.

#include "scripted/CardLine.h"
#include "scripted/FakeBridge.h"
#include "scripted/climatehib.h"
#include "tests/support/LogCapture.h"
#include "tests/support/TestInstall.h"

#include <QStringList>

#include <array>

class ClimateRig
{
public:
    ClimateRig();
    ~ClimateRig();

    FakeBridge bridge;
    CardLine cards;
    LogCapture log;
    ClimateHib *hib = nullptr;

    /// Devices for the two ports; none: the port is missing.
    void setPorts(const QString &com5, const QString &com16);
    /// What the cards say from now on, positions 1 to 4.
    void setRests(const std::array<quint32, 4> &grams);
    quint32 cardRest(int position);
    /// The texts of a log file's lines, without their times.
    QStringList lines(const QString &file) const;
    /// "board:command" of each request since the record was cleared, in hexadecimal.
    QString commands() const;
    /// The data of each request to a board's command, in hexadecimal.
    QStringList data(int board, int command) const;

private:
    TestInstall m_install;
};
