#include "Boards.h"
#include "Machine.h"

using frame::Data;

namespace
{
constexpr int valves = 2;

/// The place, from 1, whose byte is set; 0 when none is.
int chosen(const Data &data, int places)
{
    for (int place = 1; place <= places; ++place) {
        if (data[size_t(place)] == 1)
            return place;
    }
    return 0;
}

/// The two paths behind the same commands.
struct InkBytes {
    InkMaterial material;
    int feedValve;
    int feedNozzle;
    int setNozzleTime;
    size_t demand; ///< answer to 0x36: 1 is a demand, where the byte before it is 0
    size_t busy;   ///< answer to 0x50
    size_t result; ///< answer to 0xFF
};
constexpr InkBytes paths[] = {{Support, 0x40, 0x42, 0x44, 2, 1, 4}, {Structure, 0x41, 0x43, 0x45, 4, 2, 6}};
} // namespace

Board3Ink::Board3Ink(Machine &machine) : Board(machine, 3)
{
    for (int group = 0; group < 4; ++group)
        onZones(0x31 + group, 0x37 + group);
    for (const InkBytes &path : paths) {
        on(path.feedValve,
           [this, path](Data &data) { m_machine.ink().feedValve(path.material, chosen(data, valves)); });
        on(path.feedNozzle, [this, path](Data &data) {
            m_machine.ink().feedNozzle(path.material, chosen(data, geometry::heads));
        });
        on(path.setNozzleTime,
           [this, path](Data &data) { m_machine.ink().setNozzleTime(path.material, data[1]); });
    }
    const auto onQuery = [this](int command, auto fill) {
        on(command, [fill](Data &data) {
            data.fill(0);
            for (const InkBytes &path : paths)
                fill(path, data);
        });
    };
    onQuery(0x36, [this](const InkBytes &path, Data &data) {
        m_machine.ink().askDemand();
        data[path.demand] = m_machine.ink().demands(path.material);
    });
    onQuery(0x50, [this](const InkBytes &path, Data &data) {
        data[path.busy] = m_machine.ink().busy(path.material);
    });
    onQuery(0xFF, [this](const InkBytes &path, Data &data) {
        data[path.result] = m_machine.ink().result(path.material);
    });
    accept({0x46, 0xFE});
}
