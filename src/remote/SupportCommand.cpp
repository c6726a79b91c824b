// Where the axes stand, and moving them.

#include "engine/HibLibrary.h"
#include "engine/XdmControl.h"
#include "links/BoardCommands.h"
#include "platform/Log.h"
#include "platform/Mutex.h"
#include "platform/ThreadName.h"
#include "remote/DeviceCommands.h"
#include "remote/RemoteCall.h"
#include "remote/WireNumbers.h"

#include <optional>
#include <system_error>
#include <thread>
#include <utility>

namespace
{
constexpr int boards = 3;

/// On a thread that nobody waits for: homing takes up to minutes. It touches only what lives as long as the
/// process. False when there is no thread to be had.
bool detach(const char *name, void (*work)())
{
    try {
        std::thread([name, work] {
            setThreadName(name);
            work();
        }).detach();
        return true;
    } catch (const std::system_error &error) {
        LOG_WARNING(QStringLiteral("%1 not started: %2")
                        .arg(QLatin1String(name), QString::fromLocal8Bit(error.what())));
        return false;
    }
}

/// The head boards count from the home position, so they are set up anew there while X rests: a move that is
/// asked for meanwhile is made after that, the last one if there are several. Any thread.
class XAxis
{
public:
    void home();
    void move(qint32 position);

private:
    bool begin();
    void end(bool isHome);

    Mutex m_mutex;
    bool m_homing PELORA_GUARDED_BY(m_mutex) = false;
    std::optional<qint32> m_next PELORA_GUARDED_BY(m_mutex);
};

/// Lives as long as the process.
XAxis &xAxis()
{
    static auto *axis = new XAxis;
    return *axis;
}

/// False when X is on its way home already.
bool XAxis::begin()
{
    MutexLock lock(m_mutex);
    m_next.reset();
    return !std::exchange(m_homing, true);
}

void XAxis::end(bool isHome)
{
    MutexLock lock(m_mutex);
    m_homing = false;
    const std::optional<qint32> next = std::exchange(m_next, std::nullopt);
    if (!next)
        return;
    if (isHome)
        xMovePos(*next, false);
    else
        LOG_WARNING(QStringLiteral("x is not home, not moved to %1").arg(*next));
}

void XAxis::home()
{
    const auto run = [] {
        const bool isHome = xMoveZero_Wait(true) == 0; // the other form takes a silent board for home
        xdmControl()->setDotClock(boards, 0.0f);
        lockHibSetEncoderPos(1, 1);
        xAxis().end(isHome);
    };
    if (begin() && !detach("home X", run))
        end(false);
}

void XAxis::move(qint32 position)
{
    MutexLock lock(m_mutex);
    if (m_homing)
        m_next = position;
    else
        xMovePos(position, false);
}

struct Axis {
    const char *name;
    void (*home)();
    void (*move)(const QJsonValue &position);
};

constexpr Axis axes[] = {
    {"X", [] { xAxis().home(); },
     [](const QJsonValue &position) { xAxis().move(wireNumber<qint32>(position)); }},
    {"Y", [] { detach("home Y", [] { yMoveZero(); }); },
     [](const QJsonValue &position) { yMovePos(wireNumber<float>(position), false); }},
    {"Z", [] { zMoveZero(false); },
     [](const QJsonValue &position) { zMovePos(wireNumber<float>(position), false); }},
};

QJsonObject status()
{
    int encoder = 0;
    const bool readable = lockHibGetEncoderPos(1, &encoder) == 0;
    return {{"Title", "Device"},
            {"Device", "Support"},
            {"Y", getYPos(true)},
            {"X", getXPos()},
            {"Z", double(getZPos())},
            {"Hib", readable ? encoder : -1},
            {"LevelSpeed", getLevelSpeed()}};
}
} // namespace

/// Answers first, then moves. Position 0 is the home position.
void supportCommand(const RemoteCall &call)
{
    call.reply(status(), ReplyHead::Own);
    const QString name = call["Axis"].toString();
    for (const Axis &axis : axes) {
        if (name != QLatin1String(axis.name))
            continue;
        if (call["Pos"].toDouble() == 0)
            axis.home();
        else
            axis.move(call["Pos"]);
    }
}
