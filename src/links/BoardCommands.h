#pragma once
// The vocabulary of the machine boards. Each function is one or two messages to a board; every one may be
// called from any thread and logs a failed command. Positions and speeds are the boards' own units
// (micrometres, or encoder counts for X). Return conventions differ from function to function and callers
// rely on them as they are.

#include <QString>
#include <QtGlobal>

#include <array>

constexpr int boardMotion = 2;
constexpr int boardInk = 3;
constexpr int boardAir = 5;
constexpr int boardHead = 6;

// Waits for axes: 0 when stopped.
constexpr int xStopTimeout = 2;
constexpr int yzStopTimeout = 0x20004;
int waitXStop();  ///< 2 on time-out
int waitYzStop(); ///< 0x20004 on time-out
int xIsStop();    ///< 0 at rest, 6 when the query failed
int yzIsStop();   ///< 0 at rest, 6 when the query failed

// X, MotionCommands.cpp
void setXSpeed(qint32 speed);
bool xMovePos(qint32 position, bool wait);      ///< true: the wait timed out
int xMovePos_Wait(quint32 position, bool wait); ///< 3: command failed; 2: wait timed out; 0
int xMoveZero(bool wait);                       ///< 0: command failed, or stopped; 2: timed out; 1: no wait
int xMoveZero_Wait(bool wait);                  ///< 3: command failed; 2: wait timed out; 0
void xStartMove();                              ///< sweeps to the other end
qint32 getXPos();

// Y
int yMovePos(float position, bool wait); ///< 6: command failed; 0x20004: wait timed out; 0
int yMoveZero();                         ///< 6: a command failed; 0, also when the homing wait timed out
qint32 getYPos(bool compare); ///< compare: a line in ydata.csv when it differs from the last target

// Z
bool zMovePos(float position, bool wait);     ///< true: not at rest, or the wait timed out
int zMovePos_Wait(float position, bool wait); ///< 1: not at rest; 6: command failed; 0x20004; 0
int zMoveZero(bool wait);                     ///< 6: command failed; 0x20004; 0
float getZPos();

// Sensors and leveller
bool isInkDoorClosed();    ///< false also when the query failed
int isPlatformReady();     ///< not 0: seated; 0 also when the query failed
int checkElectricStatus(); ///< 1: the ink stack is on the carriage; 2: query failed
void setElectricStatus(quint8 state);
void setLevelStatus(qint32 speed); ///< leveller roller speed; 0 stops, negative turns backwards
qint32 getLevelSpeed();

// Air and enclosure, AirCommands.cpp
void ctlFrontDoor(quint8 state);
int setTopFan(quint8 a, quint8 b, quint8 c, quint8 d, quint8 e = 0); ///< 0 keeps the byte of the last call
void setRGB(quint8 code);
void setStackTemp(quint8 value);
void pressInk();
void pressOneHd(quint8 command);
/// Hold pressures of the three heads; 0 when the board does not answer.
std::array<qint16, 3> negativePressures();

// Fans, HeadSideCommands.cpp
void setFanStatus(quint8 a, quint8 b, quint8 c, quint8 d);
void updateFanSpeeds(int unused);
quint8 fanRpmForTemp(const QString &prefix, float temperature);

// Ink path, InkCommands.cpp
void strNozzleFeedingWax(quint8 head);
void supNozzleFeedingWax(quint8 head);
bool strValveFeedingWax(qint8 valve, bool wait); ///< true: abandoned or failed
bool supValveFeedingWax(qint8 valve, bool wait);
