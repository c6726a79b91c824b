#pragma once
// What the pictures of the pages show: a machine in the middle of its working life.

#include "material/BottleAccount.h"

#include <QImage>
#include <array>

/// A ring with a stone, as a model's picture: bright lines on black, which the pages show as transparent.
QImage ringPicture();
/// Four bottles with these rests in grams; those with less than nothing are missing.
Bottles bottles(const std::array<int, 4> &rests = {2950, 540, 3000, 1860});
/// Counters, mail account and maintenance dates, for pages that are made after this.
void writeSettings();
/// Temperatures, pressures and events of the last 24 hours.
void writeTrendLogs();
/// The queue's rows, waiting, printed and aborted, with their models.
void fillQueue();
/// The layer that the running job is at.
constexpr int jobLayer = 288;
void writeJobLayer(const QString &model);
/// Two alarms and a maintenance item. The services take the first back when they next look.
void raiseEvents();
