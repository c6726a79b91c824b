#pragma once
// The serial bridge: frames in, the boards' answers out, and what can go wrong on the way. It knows no port,
// so a test feeds it bytes.

#include "Boards.h"
#include "Frame.h"

#include <QObject>
#include <QSet>
#include <random>

/// Faults of the line and of the boards' answers; rates from 0 to 1.
struct LineFaults {
    double drop = 0;
    double corrupt = 0;
    double late = 0;
    int lateMs = 2500; ///< of real time: longer than both waits of the program
    QSet<int> silent;  ///< boards that take commands and do not answer
    QSet<int> dead;    ///< boards that do not even take them
};

class Bridge : public QObject
{
    Q_OBJECT
public:
    explicit Bridge(Machine &machine, QObject *parent = nullptr);

    void receive(const QByteArray &bytes) { m_reader.feed(bytes); }
    LineFaults faults;
    void setSeed(unsigned seed) { m_random.seed(seed); }
    const std::vector<std::unique_ptr<Board>> &boards() const { return m_boards; }
    quint64 requests() const { return m_requests; }

signals:
    void send(const QByteArray &bytes);

private:
    void onRequest(const frame::Record &request);
    void reply(const frame::Record &answer);
    bool happens(double rate);

    Machine &m_machine;
    std::vector<std::unique_ptr<Board>> m_boards;
    frame::Reader m_reader;
    std::mt19937 m_random{1};
    quint64 m_requests = 0;
};
