#pragma once
// A machine whose time stands still until a test moves it, ready to print.

#include "Machine.h"

class ManualClock : public MachineClock
{
public:
    double now() const override { return seconds; }
    double wall() const override { return seconds; }
    double seconds = 0;
};

struct TestMachine {
    ManualClock clock;
    Machine machine{clock};

    void pass(double seconds)
    {
        clock.seconds += seconds;
        machine.settle();
    }
    /// Homes, warms, places the heads and takes the carriage to the near end.
    void makeReady()
    {
        machine.homeX();
        pass(10);
        machine.homeY();
        machine.homeZ();
        pass(10);
        machine.zeroY();
        machine.presetEncoder(1);
        machine.setXSpeed(600);
        machine.setLevellerSpeed(500);
        HeadArray &heads = machine.headArray();
        heads.clock = {true, 6350, 600};
        for (int number = 1; number <= 3; ++number) {
            for (int sensor = 1; sensor <= 3; ++sensor)
                machine.climate().heater(number, sensor).setTarget(120, clock.seconds);
            const geometry::MountedHead &mounted = geometry::mountedHeads[number - 1];
            heads.head(number).inBar = true;
            heads.head(number).firstRow = mounted.firstRow;
            heads.head(number).overlap = mounted.overlap;
        }
        machine.moveY(12000);
        machine.moveZ(2000);
        pass(600);
    }
    /// Places a page as the delivered configuration does.
    void placePage(bool forward, int width)
    {
        constexpr double start = 130000, flight = 120;
        for (int number = 1; number <= 3; ++number) {
            Head &head = machine.headArray().head(number);
            head.pageExpected = true;
            head.pageStart = forward ? start : start + (width - 1) * 25400.0 / 600;
            head.pageOffset = (forward ? -flight : flight) - 2540 * (number - 1);
            head.pageWidth = width;
        }
    }
    /// Sweeps over a placed page with this picture.
    void print(bool forward, int width, const std::vector<std::pair<int, int>> &dots)
    {
        placePage(forward, width);
        machine.arm(picture(forward, width, dots));
        machine.sweepX();
    }
    static Picture picture(bool forward, int width, const std::vector<std::pair<int, int>> &dots)
    {
        const int stride = (width + 31) / 32 * 4;
        std::vector<uint8_t> bits(size_t(stride) * geometry::barRows);
        for (const auto &[row, column] : dots)
            bits[size_t(row * stride + column / 8)] |= uint8_t(1 << column % 8);
        Picture picture;
        picture.width = width;
        picture.rows = geometry::barRows;
        picture.dpi = 600;
        picture.forward = forward;
        picture.structure = SparsePlane::pack(bits.data(), width, geometry::barRows, stride);
        return picture;
    }
};
