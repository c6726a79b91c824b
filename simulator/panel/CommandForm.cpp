#include "CommandForm.h"

#include <QRegularExpression>

namespace
{
struct NumberName {
    const char *name;
    CommandField::Kind kind;
    int low;
    int high;
};
/// What the names in argument texts stand for; a name that is not here is a text.
constexpr NumberName numberNames[] = {
    {"BOARD", CommandField::Whole, 2, 6},
    {"HEAD", CommandField::Whole, 1, 3},
    {"POSITION", CommandField::Whole, 1, 4},
    {"BOTTLE", CommandField::Whole, 1, 4},
    {"SLOT", CommandField::Whole, 1, 4},
    {"RATE", CommandField::Decimal, 0, 1},
    {"AMOUNT", CommandField::Decimal, -100000, 100000},
    {"GRAMS", CommandField::Decimal, 0, 100000},
    {"VALUE", CommandField::Whole, 0, 100000},
    {"MS", CommandField::Whole, 0, 1000000},
    {"COUNT", CommandField::Whole, 0, 1000},
    {"TIMES", CommandField::Whole, 0, 1000},
    {"N", CommandField::Whole, 0, 1000},
};

bool isName(const QString &word)
{
    return word == word.toUpper() && word != word.toLower();
}

CommandField readField(QString word)
{
    CommandField field;
    field.optional = word.startsWith('[');
    field.name = word.remove('[').remove(']');
    static const QRegularExpression range(QStringLiteral("^(\\d+)\\.\\.(\\d+)$"));
    const QRegularExpressionMatch match = range.match(field.name);
    if (match.hasMatch()) {
        field.kind = CommandField::Whole;
        field.low = match.captured(1).toInt();
        field.high = match.captured(2).toInt();
        return field;
    }
    if (field.name.contains('|')) {
        field.kind = CommandField::Choice;
        field.words = field.name.split('|', Qt::SkipEmptyParts);
        return field;
    }
    for (const NumberName &known : numberNames) {
        if (field.name != QLatin1String(known.name))
            continue;
        field.kind = known.kind;
        field.low = known.low;
        field.high = known.high;
        return field;
    }
    if (!isName(field.name)) {
        field.kind = field.optional ? CommandField::Choice : CommandField::Fixed;
        field.words = QStringList{field.name};
    }
    return field;
}
} // namespace

std::vector<CommandForm> commandForms(const QString &arguments)
{
    std::vector<CommandForm> forms;
    for (const QString &alternative : arguments.split(QStringLiteral(" | "))) {
        CommandForm form;
        for (const QString &word : alternative.split(' ', Qt::SkipEmptyParts))
            form.push_back(readField(word));
        forms.push_back(form);
    }
    return forms;
}
