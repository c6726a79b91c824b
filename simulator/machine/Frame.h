#pragma once
// The bridge's wire format, this side's own reading of it:
//
//   AA AA  16 bytes of record, checksum (8-bit sum of the record)  55 55
//
// Inside, A5, AA and 55 are each preceded by A5. Record: u32 id (board number, OR 0x40 on a request), 8 data
// bytes, data length, channel, two reserved bytes. Little-endian.

#include <QByteArray>
#include <array>
#include <cstdint>
#include <functional>

namespace frame
{
using Data = std::array<uint8_t, 8>;

struct Record {
    uint32_t id = 0;
    Data data{};
    uint8_t length = 8;
    uint8_t channel = 0;
};

constexpr uint32_t requestBit = 0x40;

QByteArray encode(const Record &record);

/// Takes the line apart byte by byte. Noise between frames is passed over; what is wrong inside one is told.
class Reader
{
public:
    std::function<void(const Record &)> onFrame;
    std::function<void(const char *name, const QString &detail)> onError;

    void feed(const QByteArray &bytes);

private:
    void take(uint8_t byte);
    void store(uint8_t byte);
    void endFrame();

    QByteArray m_payload;
    bool m_inFrame = false;
    bool m_escaped = false;
    int m_pair = -1; ///< an unescaped AA or 55 that waits for its twin
};
} // namespace frame
