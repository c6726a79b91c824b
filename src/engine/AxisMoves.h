#pragma once
// Moves that wait for their axis, as cleaning and service runs string them together. 0, or the event of the
// axis that did not arrive, with a log line; a command that was lost counts as that too: what follows relies
// on the axis being where it was sent. Job thread or service page's worker.

/// A place of config/Sys.json, in its axis' units.
float configuredPlace(const char *key);

int stopX();
int moveX(float position);
int moveY(float position);
int moveZ(float position);
/// Homes Z, runs it down to `run` micrometres and homes it again.
int homeZ(float run);

/// Past the ink station and away from it: a stack that hangs on the carriage comes along. What the X command
/// returned when it failed, else 0.
int passInkStation();
bool isStackOnCarriage();
/// Looked at a second time only when the first look finds it there.
bool hasStackStayed();

/// Two presses of one head, and the time that the wax takes to drop. `code` is one of pressHeadCodes.
void pressHead(unsigned char code);
constexpr unsigned char pressHeadCodes[] = {0x57, 0x58, 0x59};

/// The first failure of steps one after the other; each returns 0 to go on.
template <typename... Steps> int inTurn(Steps... steps)
{
    int code = 0;
    (void)((code = steps()) || ...);
    return code;
}
