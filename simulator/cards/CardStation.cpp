#include "CardStation.h"

#include <chrono>

namespace
{
// The multiplexer's commands:
//   01 01 channel                  -> 01 01 channel
//   02 01 (address or 0x80)        -> 02 01 value
//   02 02 address value            -> 02 01 address
constexpr uint8_t toMultiplexer = 0x01, toChip = 0x02;
constexpr uint8_t selectChannel = 0x01, readRegister = 0x01, writeRegister = 0x02;
constexpr uint8_t readMark = 0x80, addressMask = 0x3F;
constexpr int channels = 6; ///< the last two are not fitted with a chip
constexpr size_t shortCommand = 3, longCommand = 4;

double realSeconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

QByteArray answer(uint8_t first, uint8_t second, uint8_t third)
{
    const char bytes[] = {char(first), char(second), char(third)};
    return {bytes, sizeof bytes};
}

bool isWrite(const Bytes &command)
{
    return command[0] == toChip && command[1] == writeRegister;
}
} // namespace

CardStation::Position::Position(Bottle &bottle, CardOs::Random random, const World &world)
    : card(bottle, std::move(random), world.violation),
      chip({[this](const AirFrame &frame) { return card.receive(frame); }, [this] { card.reset(); },
            world.seconds, world.violation})
{
}

CardStation::CardStation(BottleRack &rack, World world) : m_world(std::move(world))
{
    if (!m_world.seconds)
        m_world.seconds = realSeconds;
    for (int position = 1; position <= BottleRack::positions; ++position)
        m_positions.push_back(std::make_unique<Position>(
            rack.at(position), [this] { return uint8_t(m_random()); }, m_world));
}

std::vector<QByteArray> CardStation::receive(const QByteArray &bytes)
{
    std::vector<QByteArray> answers;
    for (const char byte : bytes) {
        m_pending.push_back(uint8_t(byte));
        while (!m_pending.empty() && !isCommand())
            skipGarbage();
        if (m_pending.size() < shortCommand || (isWrite(m_pending) && m_pending.size() < longCommand))
            continue;
        m_inGarbage = false;
        const QByteArray reply = obey();
        m_pending.clear();
        if (!reply.isEmpty())
            answers.push_back(reply);
    }
    return answers;
}

/// Whether what has come so far can still become a command.
bool CardStation::isCommand() const
{
    const Bytes &p = m_pending;
    if (p[0] != toMultiplexer && p[0] != toChip)
        return false;
    if (p.size() > 1 && p[1] != selectChannel && (p[0] != toChip || p[1] != writeRegister))
        return false;
    if (p.size() < shortCommand || p[0] == toMultiplexer)
        return true;
    return (p[2] & ~addressMask) == (p[1] == readRegister ? readMark : 0);
}

/// One byte; a run of garbage is reported once.
void CardStation::skipGarbage()
{
    if (!m_inGarbage)
        m_world.violation("card-line", QString("no command of the multiplexer: byte 0x%1 and on")
                                           .arg(m_pending.front(), 2, 16, QChar('0')));
    m_inGarbage = true;
    m_pending.erase(m_pending.begin());
}

void CardStation::select(int channel)
{
    m_selected = BottleRack::exists(channel) ? m_positions[size_t(channel - 1)].get() : nullptr;
    if (channel < 1 || channel > channels)
        m_world.violation("card-line", QString("there is no channel %1").arg(channel));
}

QByteArray CardStation::obey()
{
    if (m_pending[0] == toMultiplexer)
        select(m_pending[2]);
    if (!m_selected)
        return {};
    if (m_pending[0] == toMultiplexer)
        return answer(toMultiplexer, selectChannel, m_pending[2]);
    const uint8_t address = m_pending[2] & addressMask;
    if (!isWrite(m_pending))
        return answer(toChip, readRegister, m_selected->chip.read(address));
    m_selected->chip.write(address, m_pending[3]);
    return answer(toChip, readRegister, address);
}
