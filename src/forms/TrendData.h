#pragma once
// The sampled logs temp.csv and air.csv of the last 24 hours, reduced to what a screen can show, and the
// events of that time. Any thread.

#include <QString>
#include <QVector>
#include <array>
#include <vector>

constexpr qint64 trendSpanMs = 24 * 60 * 60 * 1000;
constexpr int trendBuckets = 288;  ///< five minutes each
constexpr int trendTempZones = 56; ///< eight groups of seven zones, in the order of temp.csv
constexpr int trendPressures = 7;  ///< structure heads 1 to 3, support heads 1 to 3, positive
constexpr int trendLevels = 6;     ///< head 1 support, head 1 structure, head 2 ...
constexpr int trendAirValues = trendPressures + trendLevels;

/// What was measured in one stretch of time.
struct TrendBucket {
    int low = 0;
    int high = 0;
    int last = 0;
    int set = 0; ///< the last set-point, where the log has one
    bool isFilled = false;
};

struct TrendCurve {
    std::array<TrendBucket, trendBuckets> buckets;
    bool hasData = false;
    /// The newest bucket with something in it, or null.
    const TrendBucket *newest() const;
};

struct TrendEvent {
    qint64 timeMs = 0;
    QString text;
};

struct TrendData {
    qint64 endMs = 0; ///< the right edge, in ms since 1970; the left one is a day before
    std::vector<TrendCurve> temps = std::vector<TrendCurve>(trendTempZones);
    std::vector<TrendCurve> air = std::vector<TrendCurve>(trendAirValues);
    QVector<TrendEvent> events; ///< oldest first, the newest few hundred
};

/// Reads the logs and those of their generations that reach into the time. What is no whole line of its log,
/// or has another time, is passed over.
TrendData readTrends(qint64 nowMs);
