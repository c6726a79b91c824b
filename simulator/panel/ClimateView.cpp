#include "ClimateView.h"

#include "Climate.h"
#include "Look.h"
#include "PlotStrip.h"
#include "common/Geometry.h"

#include <QGridLayout>
#include <QLabel>
#include <QVariant>

namespace
{
constexpr int columns = 7;

/// The seven zones of a group; a zone without a use of its own keeps its number.
struct ZoneRow {
    const char *title;
    const char *prefix; ///< of the sensors' names
    const char *zones[columns];
};
constexpr ZoneRow zoneRows[] = {
    {"Ink tubes",
     "zone.3.31.",
     {"support 1", "support 2", "support 3", "structure 1", "structure 2", "structure 3", nullptr}},
    {"Structure", "zone.3.32.", {"island 1", "island 2", "barrel 1", "barrel 2", "tube valve"}},
    {"Support", "zone.3.33.", {"island 1", "island 2", "barrel 1", "barrel 2", "tube valve"}},
    {"Brass", "zone.6.41.", {nullptr, "head 1", "head 2", "head 3"}},
    {"Leveller", "zone.6.43.", {nullptr, "roller", "scraper", "chamber outlet", "waste tube"}},
    {"Ink stack", "zone.5.32.", {nullptr, "left", "right"}},
};
constexpr int firstSensors = 3; ///< heaters of a head; its two pressures follow

QLabel *rowLabel(const QString &title)
{
    auto *label = new QLabel(title);
    label->setProperty("heading", true);
    label->setFixedWidth(74);
    return label;
}
} // namespace

ClimateView::ClimateView(Climate &climate, QWidget *parent) : QWidget(parent), m_climate(climate)
{
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 6, 0);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(4);
    for (int column = 1; column <= columns; ++column)
        grid->setColumnStretch(column, 1);
    int row = 0;
    for (int head = 1; head <= geometry::heads; ++head)
        addHead(grid, row++, head);
    addStrip(grid, 0, firstSensors + 2, "leveller", tr("leveller"));
    addStrip(grid, 0, firstSensors + 3, "pressure.positive", tr("air"));
    for (const ZoneRow &zones : zoneRows) {
        grid->addWidget(rowLabel(zones.title), row, 0);
        for (int column = 0; column < columns; ++column) {
            const QString number = QString::number(column + 1);
            addStrip(grid, row, column, zones.prefix + number,
                     zones.zones[column] ? QString(zones.zones[column]) : tr("zone %1").arg(number));
        }
        ++row;
    }
    addRest(grid, row);
    grid->setRowStretch(grid->rowCount(), 1);
}

void ClimateView::addHead(QGridLayout *grid, int row, int head)
{
    grid->addWidget(rowLabel(tr("Head %1").arg(head)), row, 0);
    for (int sensor = 1; sensor <= firstSensors; ++sensor)
        addStrip(grid, row, sensor - 1, QStringLiteral("head.%1.%2").arg(head).arg(sensor),
                 tr("heater %1").arg(sensor));
    addStrip(grid, row, firstSensors, QStringLiteral("pressure.structure.%1").arg(head), tr("hold str"));
    addStrip(grid, row, firstSensors + 1, QStringLiteral("pressure.support.%1").arg(head), tr("hold sup"));
}

void ClimateView::addStrip(QGridLayout *grid, int row, int column, const QString &name, const QString &title)
{
    if (!m_climate.find(name))
        return;
    const bool support = title.contains(QLatin1String("sup"));
    auto *strip = new PlotStrip(title, support ? look::support : look::structure);
    strip->setToolTip(name);
    m_strips[name] = strip;
    grid->addWidget(strip, row, column + 1);
}

/// What no row names, by the group of its name.
void ClimateView::addRest(QGridLayout *grid, int row)
{
    QString group;
    int column = columns;
    for (const QString &name : m_climate.names()) {
        if (m_strips.contains(name))
            continue;
        const QString prefix = name.section('.', 0, -2);
        if (prefix != group || column == columns) {
            column = 0;
            grid->addWidget(rowLabel(prefix), ++row, 0);
        }
        group = prefix;
        addStrip(grid, row, column++, name, name.section('.', -1));
    }
}

void ClimateView::follow(double seconds)
{
    for (auto at = m_strips.begin(); at != m_strips.end(); ++at) {
        // The sensor itself: the noise of Climate::reading would draw from the machine's random numbers.
        const Lag *quantity = m_climate.find(at.key());
        at.value()->add(seconds, quantity->reading(seconds), quantity->target());
    }
}
