// One sweep of a test picture.

#include "engine/HibLibrary.h"
#include "engine/XdmControl.h"
#include "printdata/SliceToImage.h"
#include "remote/DeviceCommands.h"
#include "remote/RemoteCall.h"
#include "remote/RemoteCommands.h"
#include "remote/WireNumbers.h"

namespace
{
constexpr quint8 everyDot = 0xFF;
constexpr int supportLines = -1;
constexpr int structureLines = 0;

bool isSupport(const RemoteCall &call)
{
    return call["Color"].toString() == QLatin1String("Sup");
}

void drawDots(const RemoteCall &call)
{
    const int step = wireNumber<int>(call["DotSpace"]);
    sliceToImage()->drawTestLines(isSupport(call) ? supportLines : structureLines, 0, step);
}

void loadLayer(const RemoteCall &call)
{
    sliceToImage()->getLayerImage(wireNumber<int>(call["Layer"]));
}

void fillArea(const RemoteCall &call)
{
    const bool support = isSupport(call);
    sliceToImage()->getLineImage(support ? everyDot : 0, support ? 0 : everyDot);
}
} // namespace

/// An unknown graph leaves the picture that is in memory, and prints it.
void testPrintCommand(const RemoteCall &call)
{
    const auto number = [&call](const char *key) { return wireNumber<float>(call[key]); };
    setWaveformVoltage(number("Waveform1"), number("Waveform2"), number("Waveform3"));

    static constexpr RemoteCommand graphs[] = {{"Dot", drawDots}, {"Image", loadLayer}, {"Line", fillArea}};
    const QString graph = call["Graph"].toString();
    for (const RemoteCommand &row : graphs) {
        if (graph == QLatin1String(row.title))
            row.run(call);
    }
    xdmControl()->printGraph(number("StartPos"), number("YOffset1"), number("YOffset2"), number("YOffset3"));
    call.reply(call.request(), ReplyHead::Echo);
}
