#pragma once
// The program: one machine, its ports and its end.

#include "Bridge.h"
#include "ControlServer.h"
#include "HeadServer.h"
#include "Machine.h"
#include "Pty.h"
#include "Report.h"
#include "Site.h"

#include <QObject>

struct MachineOptions {
    Site site;
    ReportOptions report;
    double scale = 1;
    double encoderResolution = 25400;
    unsigned seed = 1;
};

class PeloraMachine : public QObject
{
    Q_OBJECT
public:
    explicit PeloraMachine(const MachineOptions &options);

    /// Opens every port and tells the installation. False with the reason.
    bool start(QString *error);
    Machine &machine() { return m_machine; }
    const Site &site() const { return m_options.site; }
    /// Writes the report; once, however often the end is asked for.
    QString finish();

private:
    CommandContext context();

    MachineOptions m_options;
    ScaledClock m_clock;
    Machine m_machine;
    Bridge m_bridge;
    HeadServer m_heads;
    ControlServer m_control;
    Pty m_bridgePort;
    Pty m_cardPort;
    bool m_finished = false;
};
