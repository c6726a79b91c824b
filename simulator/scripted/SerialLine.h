#pragma once
// The far end of a serial line for scripted devices: a pseudo terminal, served on its own thread. Give path()
// to the program as its port.

#include <QByteArray>
#include <QString>

#include <functional>
#include <mutex>
#include <thread>

class SerialLine
{
public:
    /// Line thread.
    using Received = std::function<void(const QByteArray &bytes)>;

    SerialLine();
    ~SerialLine();
    SerialLine(const SerialLine &) = delete;
    SerialLine &operator=(const SerialLine &) = delete;

    QString path() const { return m_path; }
    /// Once, when all that `received` touches is there.
    void start(Received received);
    /// Any thread. What nobody reads for two seconds is lost, as on a real line.
    void send(const QByteArray &bytes);
    /// The device goes away for good; no call of `received` any more.
    void hangUp();

private:
    void run(const Received &received);

    int m_master = -1;
    int m_slave = -1; // kept open, so that the line stands while the program has it closed
    int m_wake = -1;
    QString m_path;
    std::mutex m_writeMutex; // unasked bytes against answers, and the end of both
    std::thread m_thread;
};
