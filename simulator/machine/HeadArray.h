#pragma once
// The three heads and their boards: where each prints, what is armed, what its tank and heater hold. It knows
// no time and no carriage; the machine asks it where a sweep would fire.

#include "common/Geometry.h"
#include "common/HeadProtocol.h"
#include "common/SparsePlane.h"

#include <QString>
#include <array>
#include <bitset>
#include <optional>

struct Picture {
    int width = 0;
    int rows = 0;
    int dpi = 0;
    bool forward = false;
    SparsePlane structure;
    SparsePlane support;
};

/// In the order of the wire.
struct WaveformKnot {
    float time = 0; ///< microseconds
    float voltage = 0;
    int drive = 0;
    int connect = 0;
    bool scalable = false;
    bool reference = false;
    int normRegion = 0;
};

struct Head {
    bool inBar = false;
    int firstRow = 0;
    int overlap = 0;
    /// A page that the next sweep must fill; a page of flag 1 only clears the boards.
    bool pageExpected = false;
    double pageStart = 0; ///< micrometres of the encoder
    double pageOffset = 0;
    int pageWidth = 0;
    std::array<WaveformKnot, heads::knotCount> waveform;
    std::array<std::array<int8_t, heads::colorNozzles>, heads::colors> norm = {}; ///< by colour and nozzle
    std::bitset<881> autofire;                                                    ///< by nozzle, from 1
    bool autofiring = false;
    double autofireHz = 0;
    std::optional<double> autofireLeft; ///< drops a jet; none: until it is stopped
};

struct DotClock {
    bool set = false;
    double divider = 0;
    int dpi = 0;
};

class HeadArray
{
public:
    HeadArray();

    Head &head(int number) { return m_heads[size_t(number - 1)]; }
    const Head &head(int number) const { return m_heads[size_t(number - 1)]; }
    static bool exists(int number) { return number >= 1 && number <= geometry::heads; }

    bool initialised = false;
    DotClock clock;
    std::optional<Picture> armed;

    /// Picture row minus bar row of a head.
    int rowShift(int head) const;
    bool pageExpected() const;
    void clearPages();
    /// Micrometres between two columns, given the encoder's counts per inch.
    double columnPitch(double encoderResolution) const;
    float peakVoltage(int head) const;
    void adjustVoltage(int head, float difference);

private:
    std::array<Head, geometry::heads> m_heads;
};
