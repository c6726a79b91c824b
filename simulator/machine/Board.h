#pragma once
// A controller board on the bus: a table of commands. Each handler gets the eight data bytes of a request and
// turns them into those of the answer; byte 0, the echo of the command, is left as it is.

#include "Bootloader.h"
#include "Frame.h"

#include <QMap>
#include <functional>
#include <optional>

class Machine;

class Board
{
public:
    Board(Machine &machine, int number);
    virtual ~Board() = default;
    Board(const Board &) = delete;
    Board &operator=(const Board &) = delete;

    int number() const { return m_number; }
    /// None when the board does not answer.
    std::optional<frame::Data> answer(const frame::Data &request);
    Bootloader &loader() { return m_loader; }

protected:
    using Handler = std::function<void(frame::Data &)>;
    void on(int command, Handler handler) { m_commands[command] = std::move(handler); }
    /// A setting that the model has no use for: taken and echoed.
    void accept(std::initializer_list<int> commands);
    /// Read and set-point commands of one group of seven heated zones.
    void onZones(int readCommand, int setCommand);
    /// A query that answers with what was latched at the query before, and latches the value of now.
    void onLatched(int command, std::function<int()> value);

    static int32_t number32(const frame::Data &data);
    static void putNumber32(frame::Data &data, int32_t value);
    static int number16(const frame::Data &data, int at)
    {
        return int16_t(data[size_t(at)] | data[size_t(at + 1)] << 8);
    }
    static void putNumber16(frame::Data &data, int at, int value);

    Machine &m_machine;

private:
    const int m_number;
    QMap<int, Handler> m_commands;
    QMap<int, int> m_latched;
    Bootloader m_loader;
};
