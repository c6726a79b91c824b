#include "MachinePanel.h"

#include "Bridge.h"
#include "ClimateView.h"
#include "CommandPanel.h"
#include "FaultRegister.h"
#include "FigureBar.h"
#include "InkView.h"
#include "Look.h"
#include "Machine.h"
#include "MachineView.h"
#include "QuickControls.h"
#include "ViolationList.h"

#include <QPixmap>
#include <QScrollArea>
#include <QVBoxLayout>
#include <cmath>

namespace
{
constexpr int refreshMs = 200;
constexpr int controlsWidth = 376;

QVBoxLayout *makeColumn(QWidget *widget, int margin)
{
    auto *column = new QVBoxLayout(widget);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(10);
    return column;
}

/// A card around a view that brings none of its own.
QFrame *makeCard(QWidget *content)
{
    auto *card = new QFrame;
    card->setProperty("card", true);
    QVBoxLayout *column = makeColumn(card, 12);
    column->addWidget(content);
    return card;
}
} // namespace

MachinePanel::MachinePanel(const CommandContext &context, QWidget *parent)
    : QWidget(parent), m_context(context), m_figures(new FigureBar(context.machine.clock().scale())),
      m_machine(new MachineView), m_ink(new InkView), m_climate(new ClimateView(context.machine.climate())),
      m_quick(new QuickControls),
      m_commands(new CommandPanel([this](const QString &name) { return suggest(name); })),
      m_violations(new ViolationList)
{
    setObjectName(QStringLiteral("MachinePanel"));
    setWindowTitle(tr("Simulated machine"));
    setStyleSheet(look::styleSheet());
    resize(1280, 800);
    QVBoxLayout *column = makeColumn(this, 12);
    column->addWidget(m_figures);
    auto *halves = new QHBoxLayout;
    halves->setSpacing(10);
    halves->addWidget(makeShow(), 1);
    halves->addWidget(makeControls());
    column->addLayout(halves, 1);
    connect(m_ink, &InkView::run, this, &MachinePanel::run);
    connect(m_quick, &QuickControls::run, this, &MachinePanel::run);
    connect(m_commands, &CommandPanel::run, this, &MachinePanel::run);
    connect(&m_timer, &QTimer::timeout, this, &MachinePanel::refresh);
    setFocusPolicy(Qt::ClickFocus);
    setFocus(); // on no button: a space bar would press it
    m_timer.start(refreshMs);
    refresh();
}

QWidget *MachinePanel::makeShow()
{
    auto *half = new QWidget;
    QVBoxLayout *column = makeColumn(half, 0);
    column->addWidget(makeCard(m_machine), 23);
    column->addWidget(m_ink, 18);
    auto *area = new QScrollArea;
    area->setWidgetResizable(true);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setWidget(m_climate);
    column->addWidget(makeCard(area), 29);
    return half;
}

QWidget *MachinePanel::makeControls()
{
    auto *half = new QWidget;
    half->setFixedWidth(controlsWidth);
    QVBoxLayout *column = makeColumn(half, 0);
    column->addWidget(m_quick);
    column->addWidget(m_commands, 3);
    m_violations->setMinimumHeight(150);
    column->addWidget(m_violations, 1);
    return half;
}

QStringList MachinePanel::suggest(const QString &name) const
{
    return name == QLatin1String("SENSOR") ? m_context.machine.climate().names() : QStringList();
}

void MachinePanel::refresh()
{
    Machine &machine = m_context.machine;
    const QJsonObject state = stateOf(machine, m_context.bridge);
    m_figures->follow(state, machine.recorder());
    m_machine->follow(state, std::isfinite(machine.completionTime()), machine.recorder());
    m_ink->follow(state);
    m_climate->follow(machine.now());
    m_quick->follow(state);
    m_violations->follow(machine.violations());
    if (m_context.faults) {
        m_context.faults->follow(state);
        m_commands->showFaults(m_context.faults->active());
    }
}

void MachinePanel::run(const QStringList &words)
{
    m_commands->showAnswer(words, runCommand(m_context, words));
    refresh();
}

QString MachinePanel::savePicture(const QString &path)
{
    refresh();
    return grab().save(path) ? QString() : tr("cannot write %1").arg(path);
}
