#include "links/BoardCall.h"
#include "links/BoardCommands.h"

#include "platform/Clock.h"

namespace
{

constexpr quint8 codeFeedingBusy = 0x50;
constexpr unsigned busyPollMs = 200;
constexpr int valves = 2;
constexpr int heads = 3;

// One path of wax from bottle to head.
struct WaxPath {
    int busyByte; // of the answer to codeFeedingBusy
    quint8 valveFeed;
    quint8 nozzleFeed;
};

constexpr WaxPath supportWax = {1, 0x40, 0x42};
constexpr WaxPath structureWax = {2, 0x41, 0x43};

bool inRange(int number, int last, const LogOrigin &origin)
{
    if (number >= 1 && number <= last)
        return true;
    logFor(origin, QStringLiteral("no feeding place %1").arg(number));
    return false;
}

void feedNozzle(const WaxPath &path, int head, const LogOrigin &origin = LogOrigin::current())
{
    if (inRange(head, heads, origin) && queryByte(boardInk, codeFeedingBusy, path.busyByte, 1, origin) == 0)
        sendOnly(byteMessage(boardInk, path.nozzleFeed, head, {1}), origin);
}

// False when given up. A busy board is waited for in any case, a silent one only with `wait`.
bool waitIdle(const WaxPath &path, bool wait, const LogOrigin &origin)
{
    constexpr int silent = -1;
    for (;; Sleep(busyPollMs)) {
        const int busy = queryByte(boardInk, codeFeedingBusy, path.busyByte, silent, origin);
        if (busy == 0)
            return true;
        if (busy == silent && !wait)
            return false;
    }
}

bool feedValve(const WaxPath &path, int valve, bool wait, const LogOrigin &origin = LogOrigin::current())
{
    if (!inRange(valve, valves, origin) || !waitIdle(path, wait, origin))
        return true;
    CanMsg message = byteMessage(boardInk, path.valveFeed, valve, {1});
    if (sendTraced(message, QString(), origin) != SendOk)
        return true;
    if (!waitIdle(path, wait, origin))
        return true;
    logFor(origin, QStringLiteral("valve %1 fed").arg(valve));
    return false;
}

} // namespace

void strNozzleFeedingWax(quint8 head)
{
    feedNozzle(structureWax, head);
}

void supNozzleFeedingWax(quint8 head)
{
    feedNozzle(supportWax, head);
}

bool strValveFeedingWax(qint8 valve, bool wait)
{
    return feedValve(structureWax, valve, wait);
}

bool supValveFeedingWax(qint8 valve, bool wait)
{
    return feedValve(supportWax, valve, wait);
}
