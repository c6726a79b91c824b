#pragma once
// How commands read their arguments.

#include "InkPath.h"

#include <QString>

namespace words
{
/// What a command answers to arguments that it cannot read; its usage is told instead.
extern const QString badArguments;

/// The two words that a switch takes; false for any other.
bool readSwitch(const QString &word, const char *on, const char *off, bool *value);
bool readMaterial(const QString &word, InkMaterial *material);
bool readHead(const QString &word, int *head);
/// A number that is not below 0.
bool readAmount(const QString &word, double *amount);
} // namespace words
