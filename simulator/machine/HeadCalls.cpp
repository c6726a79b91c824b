#include "HeadCalls.h"

#include "Machine.h"

#include <algorithm>
#include <cmath>

namespace heads
{
namespace
{
constexpr double mfgCode = 88.51;
constexpr int heaterSensors = 3;
constexpr int nozzles = 880;
constexpr double pictureValue = 150;
constexpr double clockMode = 0x10001;
constexpr size_t armArguments = 7;
constexpr int mainWaveform = 1;
constexpr double highestDrive = 200;    ///< volts, either way: more breaks the piezo
constexpr double fastestFiring = 50000; ///< drops a second
constexpr int firstSerial = 5200;       ///< of head 1

int init(Machine &machine, const Numbers &, Numbers *)
{
    machine.headArray().initialised = true;
    return Done;
}

int getMfgCode(Machine &, const Numbers &, Numbers *answer)
{
    *answer = {mfgCode};
    return Done;
}

/// The bar is number 1; a head stands on the board of its own number.
int addHead(Machine &machine, const Numbers &a, Numbers *)
{
    if (a[0] != 1 || !HeadArray::exists(int(a[1])) || a[1] != a[2])
        return BadArgument;
    machine.headArray().head(int(a[1])).inBar = a[4] != 0;
    return Done;
}

int placeHead(Machine &machine, const Numbers &a, Numbers *)
{
    if (a[0] != 1 || !HeadArray::exists(int(a[1])))
        return BadArgument;
    Head &head = machine.headArray().head(int(a[1]));
    head.firstRow = int(a[2]);
    head.overlap = int(a[3]);
    return Done;
}

/// Between jobs the clock is set before any picture has told its dpi.
int setDotClocks(Machine &machine, const Numbers &a, Numbers *)
{
    if (a[0] != geometry::heads || a[2] != 1 || a[3] <= 0 || a[5] != clockMode)
        return BadArgument;
    machine.headArray().clock = {a[4] > 0, a[3], int(a[4])};
    return Done;
}

int placePage(Machine &machine, const Numbers &a, Numbers *)
{
    if (a[3] <= 0)
        return BadArgument;
    Head &head = machine.headArray().head(int(a[0]));
    head.pageExpected = a[4] == 0;
    head.pageStart = a[1];
    head.pageOffset = a[2];
    head.pageWidth = int(a[3]);
    return Done;
}

int getEncoder(Machine &machine, const Numbers &, Numbers *answer)
{
    *answer = {double(machine.encoderPosition())};
    return Done;
}

int setEncoder(Machine &machine, const Numbers &a, Numbers *)
{
    machine.presetEncoder(int(a[1]));
    return Done;
}

int setAutofireMask(Machine &machine, const Numbers &a, Numbers *)
{
    if (a[1] < 1 || a[1] > nozzles)
        return BadArgument;
    machine.headArray().head(int(a[0])).autofire.set(size_t(a[1]), a[2] != 0);
    return Done;
}

int startAutofire(Machine &machine, const Numbers &a, Numbers *)
{
    if (!(a[1] > 0 && a[1] <= fastestFiring) || a[4] < 0)
        return BadArgument;
    Head &head = machine.headArray().head(int(a[0]));
    head.autofiring = true;
    head.autofireHz = a[1];
    head.autofireLeft = a[4] > 0 ? std::optional<double>(a[4]) : std::nullopt;
    return Done;
}

int stopAutofire(Machine &machine, const Numbers &a, Numbers *)
{
    machine.headArray().head(int(a[0])).autofiring = false;
    return Done;
}

/// Support, a second value that this machine has no use for, structure, a fourth.
int getInkLevels(Machine &machine, const Numbers &a, Numbers *answer)
{
    const int head = int(a[0]);
    *answer = {double(machine.ink().level(head, Support)), 0, double(machine.ink().level(head, Structure)),
               0};
    return Done;
}

int getHeaterTemp(Machine &machine, const Numbers &a, Numbers *answer)
{
    if (a[1] < 1 || a[1] > heaterSensors)
        return BadArgument;
    Climate &climate = machine.climate();
    *answer = {climate.reading(climate.heater(int(a[0]), int(a[1])), machine.now())};
    return Done;
}

int setThermalSetpoint(Machine &machine, const Numbers &a, Numbers *)
{
    if (a[1] < 1 || a[1] > heaterSensors)
        return BadArgument;
    machine.climate().heater(int(a[0]), int(a[1])).setTarget(a[2], machine.now());
    return Done;
}

int getWaveform(Machine &machine, const Numbers &a, Numbers *answer)
{
    if (a[1] != mainWaveform)
        return BadArgument;
    for (const WaveformKnot &knot : machine.headArray().head(int(a[0])).waveform) {
        for (const double value :
             {double(knot.time), double(knot.voltage), double(knot.drive), double(knot.connect),
              double(knot.scalable), double(knot.reference), double(knot.normRegion)})
            answer->push_back(value);
    }
    return Done;
}

/// A pulse goes forward in time and stays within what the head bears.
int setWaveform(Machine &machine, const Numbers &a, Numbers *)
{
    auto waveform = machine.headArray().head(int(a[0])).waveform;
    const double *value = &a[2];
    double before = 0;
    for (WaveformKnot &knot : waveform) {
        const bool sound = value[0] >= before && value[0] <= 1000 && std::abs(value[1]) <= highestDrive;
        if (!sound || a[1] != mainWaveform)
            return BadArgument;
        before = value[0];
        knot = {float(value[0]), float(value[1]), int(value[2]), int(value[3]),
                value[4] != 0,   value[5] != 0,   int(value[6])};
        value += knotNumbers;
    }
    machine.headArray().head(int(a[0])).waveform = waveform;
    return Done;
}

int adjustVoltage(Machine &machine, const Numbers &a, Numbers *)
{
    const double peak = double(machine.headArray().peakVoltage(int(a[0]))) + a[2];
    if (a[1] != mainWaveform || !(std::abs(peak) <= highestDrive))
        return BadArgument;
    machine.headArray().adjustVoltage(int(a[0]), float(a[2]));
    return Done;
}

int getHeadMisc(Machine &, const Numbers &a, Numbers *answer)
{
    if (a[1] != 1) // a board has one head
        return BadArgument;
    *answer = {firstSerial + a[0], double(colors), double(colorNozzles)};
    return Done;
}

/// A real board lists the drive data on its console.
int showHcd(Machine &, const Numbers &a, Numbers *)
{
    return a[1] == 1 && a[2] >= 1 && a[2] <= colors ? Done : BadArgument;
}

int getNorm(Machine &machine, const Numbers &a, Numbers *answer)
{
    if (a[1] < 1 || a[1] > colors)
        return BadArgument;
    const auto &norm = machine.headArray().head(int(a[0])).norm[size_t(a[1]) - 1];
    answer->assign(norm.begin(), norm.end());
    return Done;
}

int loadNorm(Machine &machine, const Numbers &a, Numbers *)
{
    const auto fits = [](double value) { return value >= -128 && value <= 127; };
    if (a[1] < 1 || a[1] > colors || !std::all_of(a.begin() + 2, a.end(), fits))
        return BadArgument;
    auto &norm = machine.headArray().head(int(a[0])).norm[size_t(a[1]) - 1];
    std::transform(a.begin() + 2, a.end(), norm.begin(), [](double value) { return int8_t(value); });
    return Done;
}

struct Call {
    Op op;
    size_t arguments;
    bool headFirst; ///< the first argument is a board or head that must exist
    int (*run)(Machine &, const Numbers &, Numbers *);
};

constexpr Call calls[] = {
    {Op::Init, 0, false, init},
    {Op::MfgCode, 1, true, getMfgCode},
    {Op::AddHead, 6, false, addHead},
    {Op::PlaceHead, 5, false, placeHead},
    {Op::DotClocks, 6, false, setDotClocks},
    {Op::Page, 5, true, placePage},
    {Op::GetEncoder, 1, true, getEncoder},
    {Op::SetEncoder, 2, true, setEncoder},
    {Op::AutofireMask, 3, true, setAutofireMask},
    {Op::AutofireStart, 5, true, startAutofire},
    {Op::AutofireStop, 1, true, stopAutofire},
    {Op::InkLevels, 1, true, getInkLevels},
    {Op::HeaterTemp, 2, true, getHeaterTemp},
    {Op::ThermalSetpoint, 3, true, setThermalSetpoint},
    {Op::GetWaveform, 2, true, getWaveform},
    {Op::AdjustVoltage, 3, true, adjustVoltage},
    {Op::SetWaveform, 2 + knotNumbers *knotCount, true, setWaveform},
    {Op::HeadMisc, 2, true, getHeadMisc},
    {Op::ShowHcd, 3, true, showHcd},
    {Op::GetNorm, 2, true, getNorm},
    {Op::LoadNorm, 2 + colorNozzles, true, loadNorm},
};
} // namespace

int runCall(Machine &machine, Op op, const Numbers &arguments, Numbers *answer)
{
    for (const Call &call : calls) {
        if (call.op != op)
            continue;
        if (call.arguments != arguments.size())
            return BadArgument;
        if (op != Op::Init && !machine.headArray().initialised)
            return NoBoards;
        if (call.headFirst && !HeadArray::exists(int(arguments[0])))
            return BadArgument;
        return call.run(machine, arguments, answer);
    }
    return BadArgument;
}

int armPicture(Machine &machine, const Numbers &a, const QByteArray &planes)
{
    if (a.size() != armArguments || a[4] != pictureValue || a[5] != 1 || a[6] < 0 || a[6] > planes.size())
        return BadArgument;
    Picture picture;
    picture.width = int(a[0]);
    picture.rows = int(a[1]);
    picture.dpi = int(a[2]);
    picture.forward = a[3] != 0;
    const auto at = planes.begin() + int(a[6]);
    picture.support.bytes.assign(planes.begin(), at);
    picture.structure.bytes.assign(at, planes.end());
    const bool whole = picture.support.valid(picture.width, picture.rows) &&
                       picture.structure.valid(picture.width, picture.rows);
    if (whole)
        machine.arm(std::move(picture));
    return whole ? Done : BadArgument;
}
} // namespace heads
