#pragma once
// A bottle's level as the pages show it.

#include <QtGlobal>

struct CardInfo;
class QProgressBar;

/// In grams.
struct BottleBar {
    int maximum = 0;
    int value = 0; ///< a small rest is raised to a hundredth, so that it stays visible
};

/// `fullGrams` is the total when no card tells one.
BottleBar bottleBar(const CardInfo &bottle, quint32 fullGrams);

/// GUI thread.
void showBar(QProgressBar *bar, const BottleBar &level);
