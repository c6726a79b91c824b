#include "links/FrameCodec.h"

namespace
{

quint8 *putEscaped(quint8 byte, quint8 *out)
{
    if (byte == frameEscape || byte == frameHead || byte == frameTail)
        *out++ = frameEscape;
    *out++ = byte;
    return out;
}

} // namespace

int encodeFrame(const quint8 *payload, int length, quint8 *out)
{
    quint8 *end = out;
    *end++ = frameHead;
    *end++ = frameHead;
    quint8 sum = 0;
    for (int i = 0; i < length; ++i) {
        sum = quint8(sum + payload[i]);
        end = putEscaped(payload[i], end);
    }
    end = putEscaped(sum, end);
    *end++ = frameTail;
    *end++ = frameTail;
    return int(end - out);
}

bool FrameDecoder::feed(quint8 byte)
{
    if (byte == frameHead && m_previous == frameHead) {
        if (m_count >= 1 && m_count <= shortFrame)
            ++m_errors;
        restart(byte);
        return false;
    }
    if (m_count > frameBufferSize) {
        restart(byte);
        return false;
    }
    if (byte == frameTail && m_previous == frameTail && m_inFrame) {
        m_previous = byte;
        return finish();
    }
    m_previous = byte;
    if (!m_inFrame)
        return false;
    if (m_escape) {
        store(byte);
        m_escape = false;
        m_previous = frameEscape; // so that an escaped AA or 55 never pairs with the next byte as a delimiter
    } else if (byte == frameEscape) {
        m_escape = true;
    } else {
        store(byte);
    }
    return false;
}

void FrameDecoder::restart(quint8 byte)
{
    m_count = 0;
    m_inFrame = true;
    m_escape = false;
    m_sum = 0; // what was cut off must not spoil the sum of the frame that follows
    m_previous = byte;
}

void FrameDecoder::store(quint8 byte)
{
    m_buffer[m_count++] = byte;
    m_sum = quint8(m_sum + byte);
}

bool FrameDecoder::finish()
{
    const quint8 sum = m_sum;
    m_sum = 0;
    m_inFrame = false;
    m_count = m_count > 0 ? m_count - 1 : 0; // the first tail byte was stored as if it were data
    if (m_count == 0) {                      // not even a check byte
        ++m_errors;
        return false;
    }
    m_length = m_count - 1;
    const quint8 check = m_buffer[m_length];
    if (quint8(sum - check - frameTail) == check)
        return true;
    ++m_errors;
    return false;
}
