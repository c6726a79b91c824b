#include "QuickControls.h"

#include "Look.h"

#include <QGridLayout>
#include <QJsonObject>
#include <QPushButton>

namespace
{
struct Switch {
    const char *objectName;
    const char *usualText;
    const char *otherText;
    const char *leaveUsual; ///< the command that does
    const char *backToUsual;
    bool (*isUsual)(const QJsonObject &state);
};

bool closed(const QJsonObject &state, const char *door)
{
    return state["doors"].toObject()[QLatin1String(door)].toString() != QLatin1String("open");
}

const Switch switches[] = {
    {"frontDoor", "Front door is closed", "Front door is OPEN", "door front open", "door front close",
     [](const QJsonObject &state) { return closed(state, "front"); }},
    {"inkBoxDoor", "Ink box is closed", "Ink box is OPEN", "door inkbox open", "door inkbox close",
     [](const QJsonObject &state) { return closed(state, "inkbox"); }},
    {"platform", "Platform is seated", "Platform is AWAY", "platform take", "platform put",
     [](const QJsonObject &state) { return state["platform"].toBool(true); }},
};
} // namespace

QuickControls::QuickControls(QWidget *parent) : QFrame(parent)
{
    setProperty("card", true);
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(12, 10, 12, 10);
    grid->setSpacing(8);
    for (const Switch &each : switches) {
        const size_t row = m_buttons.size();
        auto *button = new QPushButton(QString::fromLatin1(each.usualText));
        button->setObjectName(QString::fromLatin1(each.objectName));
        connect(button, &QPushButton::clicked, this, [this, row, &each] {
            emit run(QString::fromLatin1(m_usual[row] ? each.leaveUsual : each.backToUsual).split(' '));
        });
        grid->addWidget(button, int(row) / 2, int(row) % 2);
        m_buttons.push_back(button);
        m_usual.push_back(true);
    }
    auto *empty = new QPushButton(tr("Take the part away"));
    connect(empty, &QPushButton::clicked, this, [this] { emit run({"platform", "empty"}); });
    grid->addWidget(empty, int(m_buttons.size()) / 2, int(m_buttons.size()) % 2);
}

void QuickControls::follow(const QJsonObject &state)
{
    for (size_t row = 0; row < m_buttons.size(); ++row) {
        m_usual[row] = switches[row].isUsual(state);
        const char *text = m_usual[row] ? switches[row].usualText : switches[row].otherText;
        m_buttons[row]->setText(QString::fromLatin1(text));
        look::setState(m_buttons[row], m_usual[row] ? "usual" : "warning");
    }
}
