#pragma once
// Keeps valve islands and head tanks filled: wax goes from a bottle to its valve island, and from there to
// the tanks of the heads. Structure and support wax have a path and a thread each.

#include "material/BottleAccount.h"
#include "material/InkLevels.h"

#include <array>
#include <atomic>

struct CanMsg;

class InkFeeding
{
public:
    /// Nothing is fed while `inkDoorClosed` is 0. All three outlive the feeding.
    InkFeeding(BottleAccount &bottles, const std::atomic<quint8> &inkDoorClosed, ServiceMessage show);

    /// One look at the levels and, where wax is wanted, at most two valve feeds or one head's feed; a valve
    /// feed is waited for. False: the next pass follows at once. The path's thread.
    bool pass(InkPath path);
    /// Whatever failed may have been put right: failures count from 0 again. Any thread.
    static void forgetFailures();

private:
    struct Path;
    static const Path paths[];
    static const Path &pathOf(InkPath ink);

    void readLevels();
    bool mayFeed(const Path &path) const;
    void feedValve(const Path &path, CanMsg answer);
    bool valveFeedingResult(const Path &path, quint8 slot, const CanMsg &reply);
    void countFailure(const Path &path, quint8 slot);
    void feedHeads(const Path &path) const;
    int feedingHdInk(const Path &path, int head) const;

    BottleAccount &m_bottles;
    const std::atomic<quint8> &m_inkDoorClosed;
    const ServiceMessage m_show;
    std::array<std::atomic<unsigned>, InkLevels::heads> m_levelFailures = {}; // both threads count
};
