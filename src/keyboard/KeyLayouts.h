#pragma once
// What stands on the keyboard's keys, as tables.

#include <QString>
#include <QVector>

namespace Tactil
{
enum class KeyAction { Text, Space, Backspace, Left, Right, Enter, Shift, Language, Page, Hide };
enum class KeyPage { Letters, Pinyin, Symbols, MoreSymbols, Accents, Numbers };

constexpr int rowUnits = 20; ///< a row's width; a plain key has two units

struct Key {
    KeyAction action = KeyAction::Text;
    QString caption; ///< what is on the key; empty where an icon is
    QString text;    ///< what a text key types
    QString icon;
    QString name;                    ///< ends the key's object name
    KeyPage page = KeyPage::Letters; ///< that a page key turns to
    int units = 2;
};
using KeyRow = QVector<Key>;

/// The rows of a page from top to bottom.
QVector<KeyRow> keyRows(KeyPage page);
} // namespace Tactil
