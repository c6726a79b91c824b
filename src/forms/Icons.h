#pragma once
// The program's icons in the colours of the pages. GUI thread.

#include <QIcon>

/// ":icon/<name>.png", paler where its button is disabled.
QIcon pageIcon(const QString &name);
/// The same in the quiet colour until its button is checked.
QIcon choiceIcon(const QString &name);
/// The same in dark, for the buttons in the accent.
QIcon darkIcon(const QString &name);
