#pragma once
// How the stand-in of the head boards' library talks to the machine: one request at a time over a local
// socket, both ends of one build on one computer, so records travel as they lie in memory.
//
//   request  RequestHead, argCount doubles, then the planes of a picture (Arm alone)
//   reply    ReplyHead, valueCount doubles
//
// Requests of noReply() are not answered.

#include <cstdint>

namespace heads
{
enum class Op : uint16_t {
    Init = 1,
    MfgCode,   // board -> code
    AddHead,   // bar, head, board, connector, enabled, flags
    PlaceHead, // bar, head, first row, overlap, flags
    DotClocks, // board count, frequency, enabled, divider, dpi, mode
    Page,      // head, start, offset, width, flag
    Arm, // width, rows, dpi, forward, value150, image count, bytes of the support plane; then both planes
    WaitComplete,    // board
    GetEncoder,      // board -> counts
    SetEncoder,      // board, value
    AutofireMask,    // board, nozzle, flags
    AutofireStart,   // board, frequency, flags, mode, count
    AutofireStop,    // board
    InkLevels,       // head -> four levels
    HeaterTemp,      // head, sensor -> degrees
    ThermalSetpoint, // head, sensor, degrees
    GetWaveform,     // head, waveform -> 8 knots of 7 numbers
    AdjustVoltage,   // head, waveform, difference
    SetWaveform,     // head, waveform, 8 knots of 7 numbers
    HeadMisc,        // board, head -> serial number, colours, nozzles of a colour
    ShowHcd,         // board, head, waveform
    GetNorm,         // board, colour -> a value a nozzle
    LoadNorm,        // board, colour, a value a nozzle
};

/// 2640 of these come in a row whenever the dot clock is set, so nobody waits for them.
constexpr bool noReply(Op op)
{
    return op == Op::AutofireMask;
}

struct RequestHead {
    uint32_t size; ///< bytes that follow this head
    uint16_t op;
    uint16_t argCount;
    uint32_t sequence;
};

struct ReplyHead {
    uint32_t size; ///< bytes that follow this head
    int32_t result;
    uint32_t sequence;
};

/// Error numbers of the library.
enum Result : int32_t { Done = 0, BadArgument = 1, NoBoards = 2, TimedOut = 3, NoImage = 4 };

constexpr int knotCount = 8;
/// Time, volts, drive, connect, scalable, reference, norm region.
constexpr int knotNumbers = 7;
constexpr int colors = 2;                    ///< support 1, structure 2
constexpr int colorNozzles = 440;            ///< of a head
constexpr uint32_t requestLimit = 64u << 20; ///< no honest request is longer
} // namespace heads
