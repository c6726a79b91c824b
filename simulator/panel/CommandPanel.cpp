#include "CommandPanel.h"

#include "Commands.h"
#include "Look.h"

#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QVBoxLayout>

namespace
{
QString told(QJsonObject answer)
{
    if (!answer["ok"].toBool())
        return answer["error"].toString();
    answer.remove(QStringLiteral("ok"));
    return answer.isEmpty() ? QStringLiteral("done")
                            : QString::fromUtf8(QJsonDocument(answer).toJson(QJsonDocument::Indented));
}
} // namespace

CommandPanel::CommandPanel(const CommandRow::Suggest &suggest, QWidget *parent) : QFrame(parent)
{
    setProperty("card", true);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(12, 10, 12, 10);
    column->setSpacing(6);
    auto *search = new QLineEdit;
    search->setObjectName(QStringLiteral("filter"));
    search->setPlaceholderText(tr("Filter commands and faults"));
    search->setClearButtonEnabled(true);
    look::dimWhenEmpty(search);
    connect(search, &QLineEdit::textChanged, this, &CommandPanel::filter);
    column->addWidget(search);

    auto *content = new QWidget;
    auto *list = new QVBoxLayout(content);
    list->setContentsMargins(0, 0, 6, 0);
    list->setSpacing(0);
    addGroup(list, false, suggest);
    addGroup(list, true, suggest);
    list->addStretch();
    auto *area = new QScrollArea;
    area->setWidgetResizable(true);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setWidget(content);
    column->addWidget(area, 1);

    m_faults = new QLabel;
    m_faults->setWordWrap(true);
    m_faults->setProperty("note", true);
    column->addWidget(m_faults);
    m_answer = new QPlainTextEdit;
    m_answer->setReadOnly(true);
    m_answer->setPlaceholderText(tr("The machine's answer"));
    m_answer->setFixedHeight(58);
    column->addWidget(m_answer);
    showFaults({});
}

void CommandPanel::addGroup(QVBoxLayout *list, bool fault, const CommandRow::Suggest &suggest)
{
    m_headings[fault] = new QLabel(fault ? tr("Faults") : tr("Work the machine"));
    m_headings[fault]->setProperty("heading", true);
    m_headings[fault]->setContentsMargins(0, fault ? 10 : 0, 0, 2);
    list->addWidget(m_headings[fault]);
    // What works the machine stands before what only tells.
    for (bool tells : {false, true}) {
        for (const Command &command : commands()) {
            if (command.fault == fault && !*command.arguments == tells)
                addForms(list, command, suggest);
        }
    }
}

void CommandPanel::addForms(QVBoxLayout *list, const Command &command, const CommandRow::Suggest &suggest)
{
    for (const CommandForm &form : commandForms(QString::fromLatin1(command.arguments))) {
        auto *row = new CommandRow(command, form, suggest);
        connect(row, &CommandRow::run, this, &CommandPanel::run);
        list->addWidget(row);
        m_rows.push_back(row);
    }
}

void CommandPanel::filter(const QString &text)
{
    bool any[2] = {};
    for (CommandRow *row : m_rows) {
        const bool shown = row->matches(text.trimmed());
        row->setVisible(shown);
        any[row->fault()] |= shown;
    }
    for (bool fault : {false, true})
        m_headings[fault]->setVisible(any[fault]);
}

void CommandPanel::showAnswer(const QStringList &words, const QJsonObject &answer)
{
    m_answer->setPlainText(words.join(' ') + QStringLiteral(": ") + told(answer));
    look::setState(m_answer, answer["ok"].toBool() ? "good" : "bad");
}

QString CommandPanel::answer() const
{
    return m_answer->toPlainText();
}

void CommandPanel::showFaults(const QStringList &active)
{
    const QString text = active.isEmpty() ? tr("No fault is switched on.")
                                          : tr("Switched on: %1").arg(active.join(QStringLiteral(", ")));
    if (text == m_faults->text())
        return;
    m_faults->setText(text);
    look::setState(m_faults, active.isEmpty() ? "quiet" : "warning");
}
