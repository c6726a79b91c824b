#include "FigureBar.h"

#include "Look.h"
#include "PartRecorder.h"

#include <QHBoxLayout>
#include <QJsonArray>
#include <QJsonObject>
#include <QLabel>
#include <QLocale>

namespace
{
struct Figure {
    const char *caption;
    int stretch;
};
constexpr Figure figures[] = {{"machine time", 3}, {"layers", 2},   {"passes", 2}, {"structure dots", 4},
                              {"support dots", 4}, {"requests", 3}, {"boards", 5}, {"violations", 2}};

QString clockText(double seconds)
{
    const int whole = int(seconds);
    return QStringLiteral("%1:%2:%3")
        .arg(whole / 3600)
        .arg(whole / 60 % 60, 2, 10, QLatin1Char('0'))
        .arg(whole % 60, 2, 10, QLatin1Char('0'));
}

/// "2 3 6 run, 5 in loader".
QString boardsText(const QJsonArray &boards)
{
    QStringList running, loading;
    for (const QJsonValue &value : boards) {
        const QJsonObject board = value.toObject();
        const bool loader = board["mode"].toString() == QLatin1String("loader");
        (loader ? loading : running) << QString::number(board["board"].toInt());
    }
    QStringList parts;
    if (!running.isEmpty())
        parts << running.join(' ') + QStringLiteral(" run");
    if (!loading.isEmpty())
        parts << loading.join(' ') + QStringLiteral(" in loader");
    return parts.isEmpty() ? QStringLiteral("-") : parts.join(QStringLiteral(", "));
}
} // namespace

FigureBar::FigureBar(double timeScale, QWidget *parent) : QFrame(parent)
{
    setProperty("card", true);
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(14, 6, 14, 6);
    line->setSpacing(14);
    auto *title = new QLabel(tr("Simulated machine, x %1").arg(timeScale));
    title->setProperty("figure", true);
    line->addWidget(title, 5);
    for (const Figure &figure : figures) {
        auto *column = new QVBoxLayout;
        column->setSpacing(0);
        auto *caption = new QLabel(QString::fromLatin1(figure.caption));
        caption->setProperty("quiet", true);
        auto *value = new QLabel(QStringLiteral("-"));
        value->setProperty("figure", true);
        value->setMinimumWidth(1); // a longer number moves nothing
        column->addWidget(caption);
        column->addWidget(value);
        line->addLayout(column, figure.stretch);
        m_figures[QString::fromLatin1(figure.caption)] = value;
    }
}

void FigureBar::set(const QString &caption, const QString &text)
{
    QLabel *label = m_figures[caption];
    if (label->text() != text)
        label->setText(text);
}

void FigureBar::follow(const QJsonObject &state, const PartRecorder &recorder)
{
    quint64 dots[2] = {};
    for (int head = 0; head < geometry::heads; ++head) {
        for (int material : {0, 1})
            dots[material] += recorder.dots(head, material);
    }
    const QLocale plain(QLocale::English);
    set("machine time", clockText(state["machineSeconds"].toDouble()));
    set("layers", QString::number(state["layers"].toInt()));
    set("passes", QString::number(state["passes"].toInt()));
    set("structure dots", plain.toString(dots[0]));
    set("support dots", plain.toString(dots[1]));
    set("requests", QString::number(state["requests"].toDouble(), 'f', 0));
    set("boards", boardsText(state["boards"].toArray()));
    set("violations", QString::number(state["violations"].toInt()));
    look::setState(m_figures["violations"], state["violations"].toInt() ? "bad" : "good");
}
