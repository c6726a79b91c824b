#pragma once
// The program's icons in the colours of the pages. GUI thread.

#include <QIcon>

/// Whether an icon stands alone on its button or keeps a gap to the text behind it.
enum class IconPlace { Alone, BeforeText };

/// ":icon/<name>.png", paler where its button is disabled.
QIcon pageIcon(const QString &name, IconPlace place = IconPlace::Alone);
/// The same in the quiet colour, for what calls for nothing.
QIcon quietIcon(const QString &name, IconPlace place = IconPlace::Alone);
/// The same in dark, for the buttons in the accent; they have a text.
QIcon darkIcon(const QString &name);
/// The same in the quiet colour until its button is checked.
QIcon choiceIcon(const QString &name);
