// Where the axes stand, and moving them.

#include "engine/HibLibrary.h"
#include "engine/XdmControl.h"
#include "links/BoardCommands.h"
#include "platform/Log.h"
#include "platform/ThreadName.h"
#include "remote/DeviceCommands.h"
#include "remote/RemoteCall.h"
#include "remote/WireNumbers.h"

#include <system_error>
#include <thread>

namespace
{
constexpr int boards = 3;

/// On a thread that nobody waits for: homing takes up to minutes. It touches only what lives as long as the
/// process.
void detach(const char *name, void (*work)())
{
    try {
        std::thread([name, work] {
            setThreadName(name);
            work();
        }).detach();
    } catch (const std::system_error &error) {
        LOG_WARNING(QStringLiteral("%1 not started: %2")
                        .arg(QLatin1String(name), QString::fromLocal8Bit(error.what())));
    }
}

/// The boards count from the home position, so they are set up anew there.
void homeX()
{
    xMoveZero(true);
    xdmControl()->setDotClock(boards, 0.0f);
    lockHibSetEncoderPos(1, 1);
}

struct Axis {
    const char *name;
    void (*home)();
    void (*move)(const QJsonValue &position);
};

constexpr Axis axes[] = {
    {"X", [] { detach("home X", homeX); },
     [](const QJsonValue &position) { xMovePos(wireNumber<qint32>(position), false); }},
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
