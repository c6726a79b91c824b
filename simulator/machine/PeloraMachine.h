#pragma once
// The program: one machine, its ports and its end.

#include "Bridge.h"
#include "ControlServer.h"
#include "FaultRegister.h"
#include "HeadServer.h"
#include "Machine.h"
#include "Pty.h"
#include "Report.h"
#include "Site.h"
#include "cards/CardStation.h"

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
    /// What the commands act on, for a panel beside the control socket.
    CommandContext context();
    /// Who draws the picture that `machinectl picture` asks for.
    void setPicture(std::function<QString(const QString &path)> picture) { m_picture = std::move(picture); }
    /// Writes the report; once, however often the end is asked for.
    QString finish();

private:
    MachineOptions m_options;
    ScaledClock m_clock;
    Machine m_machine;
    Bridge m_bridge;
    CardStation m_cards;
    FaultRegister m_faults;
    std::function<QString(const QString &path)> m_picture;
    HeadServer m_heads;
    ControlServer m_control;
    Pty m_bridgePort;
    Pty m_cardPort;
    bool m_finished = false;
};
