#include "Board.h"

#include "Machine.h"

namespace
{
constexpr int busTest = 0x01;
constexpr int zones = 7;
} // namespace

Board::Board(Machine &machine, int number)
    : m_machine(machine), m_number(number), m_loader([this](const QString &name, const QString &detail) {
          m_machine.violation(name, QString("board %1: %2").arg(m_number).arg(detail));
      })
{
    accept({busTest});
}

void Board::accept(std::initializer_list<int> commands)
{
    for (int command : commands)
        on(command, [](frame::Data &) {});
}

std::optional<frame::Data> Board::answer(const frame::Data &request)
{
    m_machine.settle();
    if (Bootloader::isLoaderCommand(request[0]))
        return m_loader.isLost(request) ? std::nullopt
                                        : std::optional(m_loader.answer(request, m_machine.now()));
    if (m_loader.active())
        return std::nullopt; // the loader knows nothing else
    frame::Data data = request;
    const auto handler = m_commands.constFind(request[0]);
    if (handler != m_commands.constEnd())
        (*handler)(data);
    else
        m_machine.violation(
            "unknown-command",
            QString("board %1 knows no command 0x%2").arg(m_number).arg(request[0], 2, 16, QLatin1Char('0')));
    data[0] = request[0];
    return data;
}

void Board::onZones(int readCommand, int setCommand)
{
    on(readCommand, [this, readCommand](frame::Data &data) {
        for (int zone = 1; zone <= zones; ++zone)
            data[size_t(zone)] =
                uint8_t(m_machine.climate().zone(m_number, readCommand, zone, m_machine.now()));
    });
    on(setCommand, [this, readCommand](frame::Data &data) {
        for (int zone = 1; zone <= zones; ++zone)
            m_machine.climate().setZone(m_number, readCommand, zone, data[size_t(zone)], m_machine.now());
    });
}

void Board::onLatched(int command, std::function<int()> value)
{
    on(command, [this, command, value](frame::Data &data) {
        putNumber32(data, m_latched.value(command));
        m_latched[command] = value();
    });
}

int32_t Board::number32(const frame::Data &data)
{
    return int32_t(uint32_t(data[4]) | uint32_t(data[5]) << 8 | uint32_t(data[6]) << 16 |
                   uint32_t(data[7]) << 24);
}

void Board::putNumber32(frame::Data &data, int32_t value)
{
    for (size_t i = 0; i < 4; ++i)
        data[4 + i] = uint8_t(uint32_t(value) >> 8 * i);
}

void Board::putNumber16(frame::Data &data, int at, int value)
{
    data[size_t(at)] = uint8_t(value);
    data[size_t(at + 1)] = uint8_t(value >> 8);
}
