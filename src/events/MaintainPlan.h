#pragma once
// The routine jobs of the operator: their cycles, when each was last done, and how much of its cycle is left.

#include "frame/JsonConfig.h"

#include <QDate>

struct MaintainJob {
    const char *text; ///< UTF-8, translated in the context MaintainForm
    int cycleDays;
};

constexpr int maintainJobCount = 12;
extern const MaintainJob maintainJobs[maintainJobCount];

/// In which part of its cycle a job is.
enum class MaintainState { InTime, Due, Overdue };

/// What is left of a cycle in percent: 100 on the day the job was done, 0 on the last day, then negative. 100
/// for a date that is none.
int restPercent(const QDate &done, const QDate &today, int cycleDays);
/// Overdue is when a whole further cycle has passed.
MaintainState maintainState(int restPercent);

/// config/MaintainPlan.json: row number to the day on which that job was last done. GUI thread.
class MaintainPlan
{
public:
    /// Writes the file with every job done today if there is none.
    void createFile();
    /// Reads the file anew; false when it is missing or no JSON. What was read before then stays.
    bool load();
    int restPercent(int row) const;
    /// Notes in the file that a job was done today.
    void setDone(int row);

private:
    JsonConfig m_dates;
};
