#pragma once
// Texts that are made of the table of commands.

#include <QString>

struct Command;

QString programHelp();
QString commandHelp(const Command &command);
/// A script for bash that completes commands, their first words, options and files.
QString bashCompletion();
