#pragma once
// The serial port of the bridge: open, framing, and the one thread that reads it.

#include "links/FrameCodec.h"
#include "platform/AutoResetEvent.h"
#include "platform/Mutex.h"
#include "platform/SerialPort.h"

#include <array>
#include <atomic>
#include <thread>

class RT_COM
{
public:
    using FrameHook = void (*)(const quint8 *frame, int length, void *user);
    using RawHook = void (*)(const quint8 *bytes, int length, void *user);

    /// What went over the port since the object was made. Read on any thread.
    struct Counters {
        std::atomic<quint64> receivedBytes{0};
        std::atomic<quint64> receivedFrames{0};
        std::atomic<quint64> sentFrames{0};
        std::atomic<quint64> sentBytes{0};
        std::atomic<quint32> framingErrors{0};
    };

    RT_COM() = default;
    virtual ~RT_COM();
    RT_COM(const RT_COM &) = delete;
    RT_COM &operator=(const RT_COM &) = delete;

    /// True at once when already open with the same values; closes first when open with others. Starts the
    /// reader. Any thread but the reader.
    bool OpenPort(int portNumber, int baud);
    /// Ends the reader and closes. Nothing when closed. Any thread but the reader. The destructor of a
    /// derived class calls it, so that the reader never meets a half destroyed object.
    void ClosePort();
    bool isOpen() const { return m_open; }
    /// Frames and writes a record; bytes written, 0 on failure or when `timeoutMs` is over. One caller at a
    /// time.
    int SendFrame(const quint8 *record, quint32 length, quint32 timeoutMs);

    /// Hooks run on the reader thread with their `user` context; set them while the port is closed.
    void setFrameHook(FrameHook hook, void *user);
    void setRawHook(RawHook hook, void *user);
    /// Without it the raw hook still runs, but no frame is decoded. Any thread.
    void setParseFrames(bool parse) { m_parseFrames = parse; }

    int portNumber() const { return m_portNumber; }
    int baud() const { return m_baud; }
    /// The system's error number of the last failure. Any thread.
    int lastError() const { return m_lastError; }
    const Counters &counters() const { return m_counters; }

protected:
    /// A decoded frame. Reader thread.
    virtual void OnFrame(const quint8 *frame, int length);
    /// Every chunk before decoding. Reader thread.
    virtual void OnRawData(const quint8 *bytes, int length);

private:
    bool openDevice(int portNumber, int baud);
    void closeLocked() PELORA_REQUIRES(m_lifeMutex);
    void readLoop();
    void takeChunk(const quint8 *bytes, int length);

    Mutex m_lifeMutex;  // OpenPort and ClosePort of two threads against each other
    Mutex m_writeMutex; // a caller's write against another thread's open and close
    SerialPort m_port;  // read by the reader alone, which lives only between open and close
    std::thread m_reader PELORA_GUARDED_BY(m_lifeMutex);
    AutoResetEvent m_stopEvent; // cuts the reader's wait short
    std::atomic<bool> m_open{false};
    std::atomic<bool> m_stopReader{false};
    std::atomic<bool> m_parseFrames{true};
    std::atomic<int> m_portNumber{0};
    std::atomic<int> m_baud{0};
    std::atomic<int> m_lastError{0};
    Counters m_counters;
    FrameHook m_frameHook = nullptr;
    void *m_frameUser = nullptr;
    RawHook m_rawHook = nullptr;
    void *m_rawUser = nullptr;
    FrameDecoder m_decoder; // reader thread
    std::array<quint8, frameBufferSize> m_transmit PELORA_GUARDED_BY(m_writeMutex){};
};
