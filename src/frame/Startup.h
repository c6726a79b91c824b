#pragma once

#include <QWidget>
#include <functional>

/// The start sequence and the event loop. `mainWindow` is called once everything below the window stands.
/// Main thread, once. Returns the event loop's exit code.
int runApplication(int argc, char **argv, const std::function<QWidget *()> &mainWindow);

/// Counts the machine's running time in config/UseInfo.json, for ever, a round every ten minutes.
void runTimeCounterTask();
/// What the counter does at start, and one round of it.
void startRunTimeCounter();
void countRunTime();
