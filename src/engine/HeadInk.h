#pragma once
// The hold of whoever lets ink out of the heads while a tank is low.

#include <functional>

/// Holds, with the event raised, until no head is short of ink; false when `isStopped` said so first, which
/// is asked once a second. Job thread or service page's worker.
bool holdForHeadInk(const std::function<bool()> &isStopped);
