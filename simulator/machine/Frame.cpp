#include "Frame.h"

#include <QString>

namespace
{
constexpr uint8_t headByte = 0xAA;
constexpr uint8_t tailByte = 0x55;
constexpr uint8_t escapeByte = 0xA5;
constexpr int recordBytes = 16;
constexpr int longestPayload = 8194;

void appendEscaped(QByteArray *line, uint8_t byte)
{
    if (byte == headByte || byte == tailByte || byte == escapeByte)
        line->append(char(escapeByte));
    line->append(char(byte));
}

uint8_t sumOf(const QByteArray &bytes, int count)
{
    uint8_t sum = 0;
    for (int i = 0; i < count; ++i)
        sum = uint8_t(sum + uint8_t(bytes[i]));
    return sum;
}
} // namespace

namespace frame
{
QByteArray encode(const Record &record)
{
    QByteArray bytes(recordBytes, '\0');
    for (int i = 0; i < 4; ++i)
        bytes[i] = char(record.id >> 8 * i);
    for (int i = 0; i < 8; ++i)
        bytes[4 + i] = char(record.data[size_t(i)]);
    bytes[12] = char(record.length);
    bytes[13] = char(record.channel);
    QByteArray line(2, char(headByte));
    for (char byte : bytes)
        appendEscaped(&line, uint8_t(byte));
    appendEscaped(&line, sumOf(bytes, recordBytes));
    return line + QByteArray(2, char(tailByte));
}

void Reader::feed(const QByteArray &bytes)
{
    for (char byte : bytes)
        take(uint8_t(byte));
}

void Reader::take(uint8_t byte)
{
    if (m_escaped) {
        m_escaped = false;
        store(byte);
        return;
    }
    if (m_pair == byte) {
        m_pair = -1;
        if (byte == tailByte) {
            endFrame();
            return;
        }
        if (m_inFrame && !m_payload.isEmpty())
            onError("cut-frame", QString("a frame begins after %1 bytes of another").arg(m_payload.size()));
        m_payload.clear();
        m_inFrame = true;
        return;
    }
    if (m_pair >= 0 && m_inFrame)
        onError("unescaped-byte", QString("%1 inside a frame").arg(m_pair, 2, 16, QLatin1Char('0')));
    m_pair = -1;
    if (byte == headByte || (byte == tailByte && m_inFrame))
        m_pair = byte;
    else if (byte == escapeByte && m_inFrame)
        m_escaped = true;
    else if (m_inFrame)
        store(byte);
}

void Reader::store(uint8_t byte)
{
    m_payload.append(char(byte));
    if (m_payload.size() <= longestPayload)
        return;
    onError("endless-frame", QString("%1 bytes without an end").arg(m_payload.size()));
    m_payload.clear();
    m_inFrame = false;
}

void Reader::endFrame()
{
    m_inFrame = false;
    if (m_payload.size() != recordBytes + 1) {
        onError("frame-length", QString("%1 bytes and a checksum").arg(m_payload.size() - 1));
        return;
    }
    const uint8_t sum = sumOf(m_payload, recordBytes);
    if (sum != uint8_t(m_payload[recordBytes])) {
        onError("checksum", QString("%1 instead of %2").arg(uint8_t(m_payload[recordBytes])).arg(sum));
        return;
    }
    Record record;
    for (int i = 0; i < 4; ++i)
        record.id |= uint32_t(uint8_t(m_payload[i])) << 8 * i;
    for (int i = 0; i < 8; ++i)
        record.data[size_t(i)] = uint8_t(m_payload[4 + i]);
    record.length = uint8_t(m_payload[12]);
    record.channel = uint8_t(m_payload[13]);
    onFrame(record);
}
} // namespace frame
