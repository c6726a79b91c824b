#include "CommandRow.h"

#include "Commands.h"
#include "Look.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <algorithm>

namespace
{
/// Choices and suggestions: an editable box takes other words, too.
QWidget *makeBox(const QStringList &words, bool editable)
{
    auto *box = new QComboBox;
    box->setEditable(editable);
    box->addItems(words);
    box->setMinimumWidth(60);
    box->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    return box;
}

template <class Spin> QWidget *makeSpin(const CommandField &field)
{
    auto *spin = new Spin;
    spin->setRange(field.low, field.high);
    spin->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    spin->setMinimumWidth(60);
    return spin;
}

QWidget *makeEdit(const QString &name)
{
    auto *edit = new QLineEdit;
    edit->setPlaceholderText(name);
    look::dimWhenEmpty(edit);
    edit->setMinimumWidth(60);
    return edit;
}

QLabel *makeLabel(const QString &text, const char *property)
{
    auto *label = new QLabel(text);
    label->setProperty(property, true);
    return label;
}
} // namespace

CommandRow::CommandRow(const Command &command, const CommandForm &form, const Suggest &suggest,
                       QWidget *parent)
    : QFrame(parent), m_name(QString::fromLatin1(command.name)),
      m_searched(QStringLiteral("%1 %2 %3").arg(command.name, command.arguments, command.help)),
      m_fault(command.fault), m_form(form)
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 3, 0, 4);
    column->setSpacing(2);
    auto *hint = makeLabel(QString::fromLatin1(command.help), "quiet");
    hint->setWordWrap(true);
    setToolTip(QStringLiteral("%1 %2\n%3").arg(command.name, command.arguments, command.help));
    auto *line = new QHBoxLayout;
    line->setSpacing(6);
    line->addWidget(new QLabel(m_name));
    for (const CommandField &field : form) {
        QWidget *input = field.kind == CommandField::Fixed ? nullptr : makeInput(field, suggest);
        m_inputs.push_back(input);
        line->addWidget(input ? input : new QLabel(field.name));
    }
    if (!inputs())
        line->addStretch();
    auto *button = new QPushButton(tr("Do"));
    button->setFixedWidth(46);
    connect(button, &QPushButton::clicked, this, [this] { emit run(words()); });
    line->addWidget(button);
    column->addLayout(line);
    column->addWidget(hint);
}

QWidget *CommandRow::makeInput(const CommandField &field, const Suggest &suggest)
{
    QWidget *input = nullptr;
    const QStringList known = field.words.isEmpty() ? suggest(field.name) : field.words;
    if (!known.isEmpty()) {
        const bool open = field.words.isEmpty() ||
                          std::any_of(known.begin(), known.end(),
                                      [](const QString &w) { return w == w.toUpper() && w != w.toLower(); });
        input = makeBox(field.optional ? QStringList{QString()} + known : known, open);
    } else if (field.kind == CommandField::Whole && !field.optional) {
        input = makeSpin<QSpinBox>(field);
    } else if (field.kind == CommandField::Decimal && !field.optional) {
        input = makeSpin<QDoubleSpinBox>(field);
    } else {
        input = makeEdit(field.name);
    }
    input->setToolTip(field.name);
    return input;
}

int CommandRow::inputs() const
{
    return int(std::count_if(m_inputs.begin(), m_inputs.end(), [](QWidget *input) { return input; }));
}

QString CommandRow::value(size_t place) const
{
    QWidget *input = m_inputs[place];
    if (!input)
        return m_form[place].name;
    if (auto *box = qobject_cast<QComboBox *>(input))
        return box->currentText();
    if (auto *spin = qobject_cast<QDoubleSpinBox *>(input))
        return QString::number(spin->value());
    if (auto *spin = qobject_cast<QSpinBox *>(input))
        return QString::number(spin->value());
    return static_cast<QLineEdit *>(input)->text();
}

QStringList CommandRow::words() const
{
    QStringList words{m_name};
    for (size_t place = 0; place < m_form.size(); ++place) {
        const QString word = value(place).trimmed();
        if (word.isEmpty())
            break;
        words << word;
    }
    return words;
}

bool CommandRow::matches(const QString &filter) const
{
    return m_searched.contains(filter, Qt::CaseInsensitive);
}
