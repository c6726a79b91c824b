#pragma once
// The runs of the service page. Each repeats a round of moves until its flag is taken back, which it sees at
// the end of a round, or until something fails. They hold their thread: service page's worker, on a machine
// that does nothing else.

#include <atomic>

using KeepGoing = std::atomic<bool>;

/// How a run ended.
struct ServiceEnd {
    int code = 0;   ///< 0: the flag was taken back; else the event that ended it
    int rounds = 0; ///< finished
};

/// Whether the configuration names the ink station's places: the carriage must not be sent to 0 for them.
bool isStationConfigured();
/// Homes X and takes the carriage past the ink station. 0, or what the X command returned.
int approachStation();
/// The stack that stayed on the carriage is let go; true when it is gone.
bool releaseStack();
/// Runs Z down a little and homes it before and after. 0 or an event id.
int settleZ();

/// Takes the ink stack along and back.
ServiceEnd runStation(const KeepGoing &keepGoing);
/// The same, with a pass of dots between the rounds; the two waxes take turns.
ServiceEnd runDots(const KeepGoing &keepGoing);
/// Z up and down over its whole travel; a log line a round.
ServiceEnd runZ(const KeepGoing &keepGoing);
/// Presses each head; a log line a round. A head that is short of ink is waited for.
ServiceEnd runPurge(const KeepGoing &keepGoing);

/// Whether the bed stands where a container has its place under the heads.
bool isAtPurgeHeight();
/// Homes Z and brings the bed there. 0 or an event id.
int moveToPurgeHeight();
