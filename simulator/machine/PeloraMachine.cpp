#include "PeloraMachine.h"

#include <QCoreApplication>

PeloraMachine::PeloraMachine(const MachineOptions &options)
    : m_options(options), m_clock(options.scale), m_machine(m_clock, options.encoderResolution),
      m_bridge(m_machine),
      m_cards(m_machine.bottles(),
              {[this](const char *name, const QString &detail) { m_machine.violation(name, detail); },
               [this] { return m_clock.now(); }}),
      m_heads(m_machine), m_control(context())
{
    m_bridge.setSeed(options.seed);
    m_cards.setSeed(options.seed);
    m_machine.climate().setSeed(options.seed);
    connect(&m_bridgePort, &Pty::received, &m_bridge, &Bridge::receive);
    connect(&m_bridge, &Bridge::send, &m_bridgePort, &Pty::write);
    connect(&m_cardPort, &Pty::received, this, [this](const QByteArray &bytes) {
        for (const QByteArray &answer : m_cards.receive(bytes))
            m_cardPort.write(answer);
    });
}

CommandContext PeloraMachine::context()
{
    return {m_machine,
            m_bridge,
            m_options.site,
            [this](const QString &path) {
                ReportOptions report = m_options.report;
                if (!path.isEmpty())
                    report.file = path;
                return writeReport(m_machine, report);
            },
            [this] {
                finish();
                QMetaObject::invokeMethod(QCoreApplication::instance(), &QCoreApplication::quit,
                                          Qt::QueuedConnection);
            },
            [this](double milliseconds) { m_options.report.statedSleepMs = milliseconds; },
            &m_faults,
            [this](const QString &path) {
                return m_picture ? m_picture(path) : QStringLiteral("there is no panel; start with --panel");
            }};
}

bool PeloraMachine::start(QString *error)
{
    Site &site = m_options.site;
    return site.prepare(error) && m_bridgePort.open(site.bridge, error) &&
           m_cardPort.open(site.cards, error) && m_heads.listen(site.heads, error) &&
           m_control.listen(site.control, error) && site.tellProgram(error);
}

QString PeloraMachine::finish()
{
    if (m_finished)
        return {};
    m_finished = true;
    m_machine.settle();
    const QString error = writeReport(m_machine, m_options.report);
    if (!error.isEmpty())
        qWarning("%s", qPrintable(error));
    return error;
}
