#include "ViolationList.h"

#include "Look.h"
#include "Violations.h"

#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace
{
constexpr int rowsAtOnce = 20; ///< of a flood; the rest comes with the next looks
} // namespace

ViolationList::ViolationList(QWidget *parent)
    : QFrame(parent), m_heading(new QLabel), m_table(new QTableWidget(0, 3))
{
    setProperty("card", true);
    m_heading->setProperty("heading", true);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(12, 8, 12, 10);
    column->setSpacing(6);
    column->addWidget(m_heading);
    m_table->setHorizontalHeaderLabels({tr("Second"), tr("Name"), tr("Detail")});
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->setColumnWidth(0, 66);
    m_table->setColumnWidth(1, 120);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(22);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionMode(QAbstractItemView::NoSelection);
    m_table->setShowGrid(false);
    m_table->setWordWrap(false);
    column->addWidget(m_table);
}

int ViolationList::rows() const
{
    return m_table->rowCount();
}

void ViolationList::follow(const Violations &violations)
{
    const int end = std::min(violations.list().size(), m_table->rowCount() + rowsAtOnce);
    if (m_count == violations.count() && end == m_table->rowCount())
        return;
    m_count = violations.count();
    m_heading->setText(m_count ? tr("Violations: %1").arg(m_count) : tr("No violation"));
    look::setState(m_heading, m_count ? "bad" : "good");
    for (int row = m_table->rowCount(); row < end; ++row) {
        const QJsonObject violation = violations.list()[row].toObject();
        m_table->insertRow(row);
        const QStringList texts{QString::number(violation["seconds"].toDouble(), 'f', 1),
                                violation["name"].toString(), violation["detail"].toString()};
        for (int column = 0; column < texts.size(); ++column) {
            auto *item = new QTableWidgetItem(texts[column]);
            item->setToolTip(texts[column]);
            if (column == 1)
                item->setForeground(QColor(look::danger));
            m_table->setItem(row, column, item);
        }
        m_table->scrollToBottom();
    }
}
