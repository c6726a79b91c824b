// Firing runs by which the mass of a drop is weighed.

#include "engine/HibLibrary.h"
#include "remote/DeviceCommands.h"
#include "remote/Jets.h"
#include "remote/RemoteCall.h"
#include "remote/RemoteCommands.h"
#include "remote/WireNumbers.h"

#include <initializer_list>

namespace
{
/// A column of a head: this many jets, jetColumns rows apart.
constexpr int jetsOfColumn = jetRows / jetColumns;
constexpr int allHeads = 0;

void setOnAllChains(qint64 row, bool on)
{
    for (int chain = 1; chain <= jetChains; ++chain)
        setJet(chain, row, on);
}

void setAllJets(bool on)
{
    for (int row = 1; row <= jetRows; ++row)
        setOnAllChains(row, on);
}

void start(const RemoteCall &call, int head)
{
    for (int chain = 1; chain <= jetChains; ++chain) {
        if (head == allHeads || head == chain)
            startJets(chain, wireNumber<float>(call["Hz"]), wireNumber<int>(call["Cnt"]));
    }
}

void stopJets(const RemoteCall &)
{
    for (int chain = 1; chain <= jetChains; ++chain)
        lockHibAutofireStop(chain);
}

void setVoltages(const RemoteCall &call)
{
    setWaveformVoltage(wireNumber<float>(call["Waveform1"]), wireNumber<float>(call["Waveform2"]),
                       wireNumber<float>(call["Waveform3"]));
}

/// Row 0 is every jet, another the column that begins after it.
void fireAll(const RemoteCall &call)
{
    const qint64 row = wireNumber<int>(call["Row"]);
    setAllJets(row == 0);
    if (row != 0) {
        for (int i = 0; i < jetsOfColumn; ++i)
            setOnAllChains(row + 1 + jetColumns * i, true);
    }
    start(call, allHeads);
}

/// One wax: its columns lie in pairs between those of the other.
void fireColumns(const RemoteCall &call, std::initializer_list<int> columns)
{
    setAllJets(false);
    for (int first = 0; first < jetRows; first += jetColumns) {
        for (const int column : columns)
            setOnAllChains(first + column, true);
    }
    start(call, wireNumber<int>(call["Head"]));
}

void fireSupport(const RemoteCall &call)
{
    fireColumns(call, {1, 2, 5, 6, 9, 10, 13, 14});
}

void fireStructure(const RemoteCall &call)
{
    fireColumns(call, {3, 4, 7, 8, 11, 12, 15, 16});
}

constexpr RemoteCommand nozzles[] = {
    {"Stop", stopJets},       {"Waveform", setVoltages}, {"All", fireAll},
    {"Support", fireSupport}, {"Struct", fireStructure},
};
} // namespace

/// The client has its answer before the first drop falls.
void dropMassCommand(const RemoteCall &call)
{
    call.reply(call.request(), ReplyHead::Echo);
    const QString nozzle = call["Nozzle"].toString();
    for (const RemoteCommand &row : nozzles) {
        if (nozzle == QLatin1String(row.title))
            row.run(call);
    }
}
