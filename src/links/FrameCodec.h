#pragma once
// Byte-stuffed frames of the serial bridge: AA AA, payload and 8-bit sum with A5 before A5, AA and 55, 55 55.

#include <QByteArray>
#include <QtGlobal>

constexpr quint8 frameHead = 0xAA;
constexpr quint8 frameTail = 0x55;
constexpr quint8 frameEscape = 0xA5;
constexpr int frameBufferSize = 8194;

/// Writes the frame of `length` payload bytes to `out` (room for 2 * (length + 1) + 4) and returns its
/// length.
int encodeFrame(const quint8 *payload, int length, quint8 *out);

/// One decoder for a port. Reader thread only.
class FrameDecoder
{
public:
    /// Takes a byte; true when it completed a good frame, which frame() and length() then hold until the next
    /// byte.
    bool feed(quint8 byte);
    const quint8 *frame() const { return m_buffer; }
    int length() const { return m_length; }
    /// Frames cut off or with a bad sum so far.
    quint32 errors() const { return m_errors; }

private:
    static constexpr int shortFrame = 16; ///< stored bytes up to which a new head tells of a frame cut off

    void restart(quint8 byte);
    void store(quint8 byte);
    bool finish();

    quint8 m_buffer[frameBufferSize + 2] = {}; ///< room for the byte by which the limit is noticed
    quint8 m_previous = 0;
    bool m_inFrame = false;
    bool m_escape = false;
    int m_count = 0;
    int m_length = 0;
    quint8 m_sum = 0;
    quint32 m_errors = 0;
};
