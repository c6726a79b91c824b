#pragma once
// Exit codes of a job. They are ids of the event table, so that a code is turned into its message without a
// map.

namespace JobCode
{
constexpr int done = 0;
constexpr int alreadyShown = -1; ///< the site that failed has told the operator
constexpr int levellerFault = 0x09;
constexpr int inkDoorOpen = 0x10;
constexpr int inkStackFault = 0x11;
constexpr int pressureRecovering = 0x12;
constexpr int otherMachine = 0x13;
constexpr int heating = 0x14;
constexpr int levellerNotStarted = 0x15;
constexpr int stopped = 0x16;
constexpr int transferTimeout = 0x17;
constexpr int configurationLost = 0x19;
constexpr int printed = 0x20;
constexpr int failed = 0x21;
constexpr int xStuck = 0x20002;
constexpr int yStuck = 0x20003;
constexpr int zStuck = 0x20004;
constexpr int headInkFault = 0xffff06;
} // namespace JobCode
