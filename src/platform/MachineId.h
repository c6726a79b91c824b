#pragma once

#include <QString>

/// The computer's own UUID as its firmware tells it; empty when it cannot be read. Any thread.
QString machineId();
