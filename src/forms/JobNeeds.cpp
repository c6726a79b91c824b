#include "forms/JobNeeds.h"

#include "engine/XdmControl.h"
#include "forms/StyleProperty.h"
#include "forms/WrapLabel.h"
#include "frame/PrintStatus.h"
#include "printdata/PrintQueue.h"
#include "printdata/SliceToImage.h"

#include <QFrame>
#include <QJsonObject>
#include <QProgressBar>
#include <cmath>

namespace
{
constexpr int cardWidth = 279;
constexpr int structureX = 289;
constexpr int cardHeight = 110;
constexpr int margin = 14;
constexpr int barSteps = 1000;

/// The part of the running job that is still to be printed; it waits in the queue until its end.
double restOfJob()
{
    const QJsonObject state = xdmControl()->printState();
    const double layers = state.value(QLatin1String("SumLayer")).toDouble();
    const double printed = state.value(QLatin1String("PrintLayer")).toDouble();
    return layers > 0 ? qBound(0.0, 1 - printed / layers, 1.0) : 1;
}

void add(WaxBalance *balance, double need, double share)
{
    if (need < 0)
        ++balance->unknown;
    else
        balance->need += need * share;
}

double held(const Bottles &bottles, InkPath wax)
{
    const BottlePair pair = bottlePair(wax);
    double grams = 0;
    for (quint8 slot : {pair.first, pair.second})
        if (bottles.cards[slot].type[0]) // a bottle that is not there holds nothing
            grams += bottles.cards[slot].rest_weight;
    return grams;
}

QString whole(double grams)
{
    return QString::number(std::ceil(grams), 'f', 0);
}
} // namespace

JobNeeds::JobNeeds(QWidget *parent)
    : QWidget(parent), m_support(makeCard(0, "support")), m_structure(makeCard(structureX, "structure"))
{
}

JobNeeds::Card JobNeeds::makeCard(int x, const char *barRole)
{
    auto *frame = new QFrame(this);
    frame->setProperty("role", "card");
    frame->setGeometry(x, 0, cardWidth, cardHeight);
    const int width = cardWidth - 2 * margin;
    const auto label = [&](const char *role, const QRect &place) {
        auto *made = new WrapLabel(frame);
        made->setProperty("role", role);
        made->setGeometry(place);
        made->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        return made;
    };
    label("caption", {margin, 6, width, 24})->setText(tr("等待任务需要"));
    Card card;
    card.bar = new QProgressBar(frame);
    card.bar->setProperty("role", barRole);
    card.bar->setTextVisible(false);
    card.bar->setRange(0, barSteps);
    card.bar->setGeometry(margin, 34, width, 14);
    card.grams = label("quiet", {margin, 50, width, 28});
    card.verdict = label("verdict", {margin, 77, width, 28});
    return card;
}

void JobNeeds::refresh(const Bottles &bottles)
{
    if (!isVisible())
        return;
    WaxBalance support, structure;
    support.have = held(bottles, SupportInk);
    structure.have = held(bottles, StructureInk);
    const QString running = printStatus() == PrintStatusIdle ? QString() : sliceToImage()->fileName();
    for (const WaxNeed &need : waitingNeeds()) {
        const double share = need.modelName == running ? restOfJob() : 1;
        add(&support, need.support, share);
        add(&structure, need.structure, share);
    }
    show(m_support, support);
    show(m_structure, structure);
}

/// The bar is what the jobs take of what there is.
void JobNeeds::show(const Card &card, const WaxBalance &balance)
{
    const bool enough = balance.missing() <= 0;
    card.grams->setText(QStringLiteral("%1%2 g / %3 g")
                            .arg(balance.unknown ? QStringLiteral("≥ ") : QString(), whole(balance.need),
                                 whole(balance.have)));
    card.verdict->setText(!enough           ? tr("缺 %1 g").arg(whole(balance.missing()))
                          : balance.unknown ? tr("%1 个未知").arg(balance.unknown)
                                            : tr("够"));
    setStyleProperty(card.verdict, "state", !enough ? "missing" : balance.unknown ? "unknown" : "enough");
    const double taken = balance.have > 0 ? balance.need / balance.have : (balance.need > 0 ? 1 : 0);
    card.bar->setValue(int(qMin(1.0, taken) * barSteps));
}
