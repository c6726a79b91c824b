#include "links/RT_COM.h"

#include "platform/Clock.h"
#include "platform/Log.h"
#include "platform/ThreadName.h"

#include <QDebug>

namespace
{

constexpr unsigned settleMs = 60;      // the bridge's driver needs it after set-up and after close
constexpr unsigned deviceGoneMs = 100; // between two looks at a device that went away
constexpr int readChunk = 1024;
constexpr int delimiters = 4;

} // namespace

RT_COM::~RT_COM()
{
    ClosePort();
}

bool RT_COM::OpenPort(int portNumber, int baud)
{
    MutexLock life(m_lifeMutex);
    if (m_open && m_portNumber == portNumber && m_baud == baud)
        return true;
    closeLocked();
    if (!openDevice(portNumber, baud))
        return false;
    Sleep(settleMs);
    m_portNumber = portNumber;
    m_baud = baud;
    m_stopReader = false;
    m_stopEvent.reset();
    m_reader = std::thread(&RT_COM::readLoop, this);
    m_open = true;
    return true;
}

bool RT_COM::openDevice(int portNumber, int baud)
{
    char name[20];
    qsnprintf(name, sizeof name, "\\\\.\\COM%d", portNumber);
    qDebug("com= %s\r\n", name);
    MutexLock write(m_writeMutex);
    if (m_port.open(portNumber, baud))
        return true;
    m_lastError = m_port.lastError();
    m_port.close();
    return false;
}

void RT_COM::ClosePort()
{
    MutexLock life(m_lifeMutex);
    closeLocked();
}

void RT_COM::closeLocked()
{
    if (!m_open)
        return;
    m_stopReader = true;
    m_stopEvent.set();
    m_reader.join();
    {
        MutexLock write(m_writeMutex);
        m_port.close();
    }
    Sleep(settleMs);
    m_open = false;
}

int RT_COM::SendFrame(const quint8 *record, quint32 length, quint32 timeoutMs)
{
    MutexLock write(m_writeMutex);
    if (!m_port.isOpen() || length > (m_transmit.size() - delimiters) / 2 - 1)
        return 0;
    const int size = encodeFrame(record, int(length), m_transmit.data());
    const int written = m_port.write(m_transmit.data(), size, timeoutMs);
    if (written != size) { // a write that is not whole when its time is over counts as none
        m_lastError = m_port.lastError();
        return 0;
    }
    m_counters.sentBytes += quint64(written);
    ++m_counters.sentFrames;
    return written;
}

void RT_COM::setFrameHook(FrameHook hook, void *user)
{
    m_frameHook = hook;
    m_frameUser = user;
}

void RT_COM::setRawHook(RawHook hook, void *user)
{
    m_rawHook = hook;
    m_rawUser = user;
}

void RT_COM::OnFrame(const quint8 *frame, int length)
{
    if (m_frameHook)
        m_frameHook(frame, length, m_frameUser);
    ++m_counters.receivedFrames;
}

void RT_COM::OnRawData(const quint8 *bytes, int length)
{
    if (m_rawHook)
        m_rawHook(bytes, length, m_rawUser);
    m_counters.receivedBytes += quint64(length);
}

void RT_COM::readLoop()
{
    setThreadName("RT_COM reader");
    quint8 chunk[readChunk];
    bool gone = false;
    while (!m_stopReader) {
        const int count = m_port.read(chunk, sizeof chunk);
        if (count > 0)
            takeChunk(chunk, count);
        if (count < 0) {
            if (!gone) {
                m_lastError = m_port.lastError();
                LOG_WARNING(QStringLiteral("serial device gone, error=%1").arg(m_lastError.load()));
            }
            m_stopEvent.wait(deviceGoneMs);
        }
        gone = count < 0;
    }
}

void RT_COM::takeChunk(const quint8 *bytes, int length)
{
    OnRawData(bytes, length);
    if (!m_parseFrames)
        return;
    for (int i = 0; i < length; ++i)
        if (m_decoder.feed(bytes[i]))
            OnFrame(m_decoder.frame(), m_decoder.length());
    m_counters.framingErrors = m_decoder.errors();
}
