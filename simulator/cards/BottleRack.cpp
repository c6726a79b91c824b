#include "BottleRack.h"

BottleRack::BottleRack() = default;
