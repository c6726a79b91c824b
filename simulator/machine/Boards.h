#pragma once
// The four boards that answer on the bus.

#include "Board.h"

#include <memory>
#include <vector>

/// 2: axes, leveller, ink stack, platform switch.
class Board2Motion : public Board
{
public:
    explicit Board2Motion(Machine &machine);
};

/// 3: ink tubes, valve islands, barrels.
class Board3Ink : public Board
{
public:
    explicit Board3Ink(Machine &machine);
};

/// 5: pressures, fans, light, doors, stack temperature.
class Board5Air : public Board
{
public:
    explicit Board5Air(Machine &machine);
};

/// 6: head brass, roller, scraper, nozzle fans.
class Board6Head : public Board
{
public:
    explicit Board6Head(Machine &machine);
};

std::vector<std::unique_ptr<Board>> makeBoards(Machine &machine);
