#pragma once
// A serial byte stream, 8 data bits, no parity, one stop bit.

#include <QString>
#include <QtGlobal>
#include <memory>

class SerialPort
{
public:
    SerialPort();
    ~SerialPort();
    SerialPort(const SerialPort &) = delete;
    SerialPort &operator=(const SerialPort &) = delete;

    /// Opens COM`portNumber` at `baud`: the device is the value of "COM<n>" in config/Platform.json, else
    /// /dev/ttyS<n-1>. False on failure, lastError() tells why.
    bool open(int portNumber, int baud);
    void close();
    bool isOpen() const;

    /// Bytes written; less than `length` when the time is over (real milliseconds), 0 on failure. One writer.
    int write(const quint8 *bytes, int length, unsigned timeoutMs);
    /// Waits until what was written has left the computer, at most `timeoutMs` real milliseconds. The writer.
    void flush(unsigned timeoutMs);
    /// Returns within a few milliseconds with up to `capacity` bytes, 0 when none came, -1 when the device
    /// is gone. One reader, which may be another thread than the writer.
    int read(quint8 *buffer, int capacity);

    /// The system's error number of the last failure.
    int lastError() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};
