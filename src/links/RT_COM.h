#pragma once
// The serial port of the bridge: open, framing, and the one thread that reads it.

#include "links/FrameCodec.h"
#include "platform/SerialPort.h"

#include <atomic>
#include <thread>

class RT_COM
{
public:
    using FrameHook = void (*)(const quint8 *frame, int length, void *user);
    using RawHook = void (*)(const quint8 *bytes, int length, void *user);

    RT_COM() = default;
    virtual ~RT_COM();

    /// True at once when already open with the same values; closes first when open with others. Starts the reader.
    bool OpenPort(int portNumber, int baud);
    /// Ends the reader and closes.
    void ClosePort();
    bool isOpen() const { return m_open; }
    /// Frames and writes a record; bytes written, 0 on failure or when `timeoutMs` is over. One caller at a time.
    int SendFrame(const quint8 *record, quint32 length, quint32 timeoutMs);

protected:
    /// A decoded frame. Reader thread.
    virtual void OnFrame(const quint8 *frame, int length);
    /// Every chunk before decoding. Reader thread.
    virtual void OnRawData(const quint8 *bytes, int length);

private:
    SerialPort m_port;
    std::atomic<bool> m_open{false};
};
