#include "Boards.h"

#include "Machine.h"

using frame::Data;

namespace
{
constexpr int allTanks = 0x3F; ///< one bit each
constexpr int pressFirstHead = 0x57;
} // namespace

Board2Motion::Board2Motion(Machine &machine) : Board(machine, 2)
{
    on(0x60, [this](Data &data) { m_machine.moveY(number32(data)); });
    on(0x62, [this](Data &) { m_machine.homeY(); });
    on(0x63, [this](Data &) { m_machine.homeZ(); });
    on(0x65, [this](Data &data) { m_machine.moveZ(number32(data)); });
    on(0x70, [this](Data &data) {
        data[1] = m_machine.yzMoving();
        data[3] = m_machine.xMoving();
    });
    on(0x71, [this](Data &data) { data[2] = data[3] = m_machine.platformSeated; });
    on(0x72, [this](Data &data) { data[2] = m_machine.stackCoupled(); });
    on(0x80, [this](Data &) { m_machine.zeroY(); });
    onLatched(0x81, [this] { return m_machine.yPosition(); });
    onLatched(0x82, [this] { return m_machine.xCounts(); });
    on(0x83, [this](Data &) { m_machine.sweepX(); });
    on(0x84, [this](Data &data) { putNumber32(data, m_machine.zPosition()); });
    on(0x85, [this](Data &) { m_machine.homeX(); });
    on(0x86, [this](Data &data) { m_machine.moveX(number32(data)); });
    on(0x87, [this](Data &data) { m_machine.setMagnet(data[1] != 0); });
    on(0x8E, [this](Data &data) { m_machine.setXSpeed(number32(data)); });
    on(0x8F, [this](Data &data) { m_machine.setLevellerSpeed(number32(data)); });
    onLatched(0x90, [this] { return m_machine.levellerSpeed(); });
}

Board5Air::Board5Air(Machine &machine) : Board(machine, 5)
{
    onZones(0x71, 0x72);
    onZones(0x32, 0x40);
    // The stack temperature comes by the same command and names its own two zones alone: 0 keeps what is set.
    on(0x40, [this](Data &data) {
        for (int zone = 1; zone <= 7; ++zone) {
            if (data[size_t(zone)])
                m_machine.climate().setZone(5, 0x32, zone, data[size_t(zone)], m_machine.now());
        }
    });
    on(0x33, [this](Data &data) {
        data[2] = m_machine.inkDoorClosed;
        m_machine.ink().tellDoor(m_machine.inkDoorClosed);
    });
    const auto hold = [this](int material, int head) -> Lag & {
        return m_machine.climate().holdPressure(material, head);
    };
    for (int material : {0, 1}) {
        on(0x34 + material, [this, material, hold](Data &data) {
            for (int head = 1; head <= 3; ++head)
                putNumber16(data, 2 * head,
                            int(m_machine.climate().reading(hold(material, head), m_machine.now())));
        });
        // Set as a depth, read as a pressure below that of the room.
        on(0x44 + material, [this, material, hold](Data &data) {
            for (int head = 1; head <= 3; ++head)
                hold(material, head).setTarget(-std::abs(number16(data, 2 * head)), m_machine.now());
        });
    }
    on(0x36, [this](Data &data) {
        Climate &climate = m_machine.climate();
        putNumber16(data, 1, int(climate.reading(climate.positivePressure(), m_machine.now())));
    });
    on(0x46, [this](Data &data) {
        m_machine.climate().positivePressure().setTarget(data[1] << 8 | data[2], m_machine.now());
    });
    on(0x6A, [this](Data &data) {
        if (data[2] != allTanks)
            m_machine.violation("press-request", QString("tanks 0x%1").arg(data[2], 0, 16));
        for (int head = 1; head <= geometry::heads; ++head)
            m_machine.ink().press(head);
    });
    for (int head = 1; head <= geometry::heads; ++head)
        on(pressFirstHead + head - 1, [this, head](Data &) { m_machine.ink().press(head); });
    on(0x70, [this](Data &data) { m_machine.ink().setPressTime(data[7]); });
    accept({0x41, 0x42, 0x43, 0x48, 0x73});
}

Board6Head::Board6Head(Machine &machine) : Board(machine, 6)
{
    onZones(0x41, 0x44);
    onZones(0x43, 0x45);
    on(0x42, [this](Data &data) {
        for (int zone = 1; zone <= 7; ++zone)
            data[size_t(zone)] = uint8_t(m_machine.climate().zone(6, 0x42, zone, m_machine.now()));
    });
    accept({0x46});
}

std::vector<std::unique_ptr<Board>> makeBoards(Machine &machine)
{
    std::vector<std::unique_ptr<Board>> boards;
    boards.push_back(std::make_unique<Board2Motion>(machine));
    boards.push_back(std::make_unique<Board3Ink>(machine));
    boards.push_back(std::make_unique<Board5Air>(machine));
    boards.push_back(std::make_unique<Board6Head>(machine));
    return boards;
}
