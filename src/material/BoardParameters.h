#pragma once
// Values from the configuration that the boards keep and regulate by themselves: sent once, at start.

#include <QJsonObject>

/// Pressures, pump speeds and valve settings of config/Air.json. Always 0. Any thread.
int setAirPressurePara(QJsonObject air);
/// Feeding and pressing times of config/Ink.json. Any thread.
void setInkFeedingPara(QJsonObject ink);
