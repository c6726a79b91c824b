#include "InkView.h"

#include "BottleView.h"
#include "InkPath.h"
#include "Look.h"
#include "TankView.h"
#include "common/Geometry.h"

#include <QHBoxLayout>
#include <QJsonArray>
#include <QJsonObject>

namespace
{
constexpr double fullLevel = InkPath::fullTank * InkPath::levelPerGram;
constexpr double fullIslandGrams = 135; ///< of the bar: it wants more below 70, and gets 65
constexpr int bottles = 4;

struct Ink {
    const char *key;
    const char *shortName;
    QRgb colour;
};
constexpr Ink inks[] = {{"structure", "str", look::structure}, {"support", "sup", look::support}};

QString grams(const QJsonValue &value)
{
    return look::number(value.toDouble(), value.isDouble(), 1) + QStringLiteral(" g");
}
} // namespace

InkView::InkView(QWidget *parent) : QFrame(parent)
{
    setProperty("card", true);
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(14, 10, 14, 10);
    line->setSpacing(6);
    for (int head = 1; head <= geometry::heads; ++head) {
        for (const Ink &ink : inks) {
            m_tanks.push_back(new TankView(tr("H%1 %2").arg(head).arg(ink.shortName), ink.colour));
            line->addWidget(m_tanks.back(), 10);
        }
    }
    line->addSpacing(6);
    for (const Ink &ink : inks) {
        m_islands.push_back(new TankView(tr("isl. %1").arg(ink.shortName), ink.colour));
        line->addWidget(m_islands.back(), 12);
    }
    line->addSpacing(6);
    for (int position = 1; position <= bottles; ++position) {
        m_bottles.push_back(new BottleView(position));
        connect(m_bottles.back(), &BottleView::run, this, &InkView::run);
        line->addWidget(m_bottles.back(), 38);
    }
}

void InkView::follow(const QJsonObject &state)
{
    const QJsonArray heads = state["heads"].toArray();
    auto tank = m_tanks.begin();
    for (int head = 0; head < geometry::heads; ++head) {
        const QJsonObject values = heads[head].toObject();
        for (const Ink &ink : inks) {
            const double level = values[ink.key].toDouble();
            (*tank++)->set(level / fullLevel,
                           QString::number(level, 'f', 0) + '\n' + grams(values[QString(ink.key) + "Grams"]),
                           {});
        }
    }
    const QJsonObject islands = state["ink"].toObject()["islands"].toObject();
    for (size_t i = 0; i < m_islands.size(); ++i) {
        const QJsonObject island = islands[inks[i].key].toObject();
        const int failed = state["ink"].toObject()["failedFeeds"].toObject()[inks[i].key].toInt();
        const QString note = island["busy"].toBool()     ? tr("feeding")
                             : island["demand"].toBool() ? tr("demand")
                             : failed                    ? tr("%1 failed").arg(failed)
                                                         : QString();
        m_islands[i]->set(island["grams"].toDouble() / fullIslandGrams, grams(island["grams"]), note);
    }
    const QJsonArray list = state["bottles"].toArray();
    for (size_t i = 0; i < m_bottles.size(); ++i)
        m_bottles[i]->set(list[int(i)].toObject());
}
