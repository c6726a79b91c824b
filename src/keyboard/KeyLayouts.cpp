#include "keyboard/KeyLayouts.h"

#include <QStringList>

namespace Tactil
{
namespace
{
// Words that stand for a key without a text of its own. Whatever else stands in a row types itself.
const struct {
    const char *word;
    KeyAction action;
    const char *icon;
    const char *name;
    KeyPage page;
} words[] = {
    {"space", KeyAction::Space, "space", "space", {}},
    {"back", KeyAction::Backspace, "backspace", "backspace", {}},
    {"left", KeyAction::Left, "left", "left", {}},
    {"right", KeyAction::Right, "right", "right", {}},
    {"enter", KeyAction::Enter, "enter", "enter", {}},
    {"shift", KeyAction::Shift, "shift", "shift", {}},
    {"hide", KeyAction::Hide, "hide", "hide", {}},
    {"EN", KeyAction::Language, "", "language", {}},
    {"中", KeyAction::Language, "", "language", {}},
    {"ABC", KeyAction::Page, "", "letters", KeyPage::Letters},
    {"123", KeyAction::Page, "", "symbols", KeyPage::Symbols},
    {"#+=", KeyAction::Page, "", "moreSymbols", KeyPage::MoreSymbols},
    {"çé", KeyAction::Page, "", "accents", KeyPage::Accents},
};

// A number behind a colon is the key's width in units.
const struct {
    KeyPage page;
    const char *rows;
} pages[] = {
    {KeyPage::Letters, "@ . , - _ ; : / ? !\n"
                       "1 2 3 4 5 6 7 8 9 0\n"
                       "q w e r t y u i o p\n"
                       "a s d f g h j k l '\n"
                       "shift:3 z x c v b n m back:3\n"
                       "123 EN çé space:4 . left right enter hide"},
    {KeyPage::Pinyin, "1 2 3 4 5 6 7 8 9 0\n"
                      "q w e r t y u i o p\n"
                      "a s d f g h j k l '\n"
                      "shift:3 z x c v b n m back:3\n"
                      "123 中 ， space:4 。 left right enter hide"},
    {KeyPage::Symbols, "1 2 3 4 5 6 7 8 9 0\n"
                       "@ # $ % & * - _ + =\n"
                       "( ) [ ] { } < > / \\\n"
                       ". , ; : ? ! ' \" ~ |\n"
                       "#+=:3 ^ ` ° € £ ¥ § back:3\n"
                       "ABC:4 çé space:4 . left right enter hide"},
    {KeyPage::MoreSymbols, "， 。 、 ； ： ？ ！ … — ·\n"
                           "“ ” ‘ ’ 《 》 （ ） 【 】\n"
                           "× ÷ ± ≈ ≤ ≥ µ Ω ² ³\n"
                           "« » „ – • → ← ↑ ↓ ★\n"
                           "123:3 № ™ © ® ½ ¼ ‰ back:3\n"
                           "ABC:4 çé space:4 . left right enter hide"},
    {KeyPage::Accents, "ç ğ ı İ ö ş ü â î û\n"
                       "à è é ê ë ï ô ù œ æ\n"
                       "ÿ ä á í ó ú ñ ã õ ß\n"
                       "shift:3 å ø ò ì « » ’ back:3\n"
                       "ABC:4 123 space:4 . left right enter hide"},
    {KeyPage::Numbers, "1:5 2:5 3:5 back:5\n"
                       "4:5 5:5 6:5 left:5\n"
                       "7:5 8:5 9:5 right:5\n"
                       ".:5 0:5 -:5 enter:5\n"
                       "ABC:5 ::5 /:5 hide:5"},
};

Key makeKey(const QString &word, int units)
{
    Key key;
    key.units = units;
    key.caption = key.text = key.name = word;
    for (const auto &entry : words) {
        if (word != QString::fromUtf8(entry.word))
            continue;
        key.action = entry.action;
        key.text.clear();
        key.icon = QLatin1String(entry.icon);
        key.name = QLatin1String(entry.name);
        key.page = entry.page;
        if (!key.icon.isEmpty())
            key.caption.clear();
    }
    return key;
}

KeyRow makeRow(const QString &text)
{
    KeyRow row;
    for (const QString &word : text.split(QLatin1Char(' '))) {
        const int colon = word.lastIndexOf(QLatin1Char(':'));
        row << (colon > 0 ? makeKey(word.left(colon), word.midRef(colon + 1).toInt()) : makeKey(word, 2));
    }
    return row;
}
} // namespace

QVector<KeyRow> keyRows(KeyPage page)
{
    QVector<KeyRow> rows;
    for (const auto &entry : pages)
        if (entry.page == page)
            for (const QString &row : QString::fromUtf8(entry.rows).split(QLatin1Char('\n')))
                rows << makeRow(row);
    return rows;
}
} // namespace Tactil
