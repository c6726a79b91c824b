#include "BottleView.h"

#include "Look.h"

#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{
constexpr double fullGrams = 3600;
constexpr int supportPositions = 2; ///< positions 1 and 2 hold support wax, 3 and 4 structure wax
constexpr int textLeft = 19;
constexpr int lineHeight = 15;
} // namespace

BottleView::BottleView(int position, QWidget *parent)
    : QWidget(parent), m_position(position), m_button(new QPushButton(tr("Put")))
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addStretch();
    column->addWidget(m_button);
    m_button->setEnabled(false);
    connect(m_button, &QPushButton::clicked, this, [this] {
        const bool present = m_bottle["present"].toBool();
        emit run({"bottle", QString::number(m_position), present ? "pull" : "put"});
    });
}

void BottleView::set(const QJsonObject &bottle)
{
    if (bottle == m_bottle)
        return;
    m_bottle = bottle;
    m_button->setEnabled(!bottle.isEmpty());
    m_button->setText(bottle["present"].toBool() ? tr("Pull") : tr("Put"));
    update();
}

QString BottleView::text(const char *key, const QString &unit) const
{
    const QJsonValue value = m_bottle[QLatin1String(key)];
    const QString text = value.isDouble() ? QString::number(value.toDouble(), 'f', 0) : value.toString();
    return text.isEmpty() ? QStringLiteral("-") : text + unit;
}

void BottleView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRgb colour = m_position <= supportPositions ? look::support : look::structure;
    const QString fault = m_bottle["fault"].toString();
    look::drawText(
        painter, QRectF(0, 0, width(), 18), Qt::AlignVCenter, fault.isEmpty() ? look::quiet : look::danger,
        12, fault.isEmpty() ? tr("Bottle %1").arg(m_position) : tr("%1: %2").arg(m_position).arg(fault));
    const QRectF bottle(1, 27, 15, height() - 26 - m_button->height() - 10);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(look::line));
    painter.drawRoundedRect(bottle, 5, 5);
    painter.drawRect(QRectF(bottle.center().x() - 4, bottle.top() - 5, 8, 7));
    const bool present = m_bottle["present"].toBool();
    if (present) {
        const double share = qBound(0.0, m_bottle["grams"].toDouble() / fullGrams, 1.0);
        painter.setBrush(QColor(colour));
        painter.drawRoundedRect(bottle.adjusted(0, bottle.height() * (1 - share), 0, 0), 6, 6);
    }
    const QStringList lines = m_bottle.isEmpty() ? QStringList{"-"}
                              : !present
                                  ? QStringList{tr("taken out")}
                                  : QStringList{text("grams", " g"), tr("card %1").arg(text("rest", " g")),
                                                text("type"), text("sn"), text("date")};
    for (int line = 0; line < lines.size(); ++line)
        look::drawText(painter, QRectF(textLeft, 22 + line * lineHeight, width() - textLeft, lineHeight),
                       Qt::AlignVCenter, line ? look::quiet : look::text, line ? 10 : 12, lines[line]);
}
