#include "forms/TrendData.h"

#include "frame/RotatingLog.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <functional>

namespace
{
constexpr int longestLine = 4096;                    ///< a longer one is none of ours
constexpr qint64 mostBytes = 2 * qint64{logMaxSize}; ///< of one file: more is damage, its end counts
constexpr int mostEvents = 300;
constexpr int mostDigits = 6;

/// Digits from `*at` on, which moves behind them; -1 when there are none or too many.
int digits(const char **at, int most)
{
    int value = 0, count = 0;
    for (; **at >= '0' && **at <= '9'; ++*at) {
        if (++count > most)
            return -1;
        value = value * 10 + (**at - '0');
    }
    return count ? value : -1;
}

bool skip(const char **at, char mark)
{
    if (**at != mark)
        return false;
    ++*at;
    return true;
}

/// Reads "yy.MM.dd hh:mm:ss.z," at the start of lines. Making a time of its parts takes long, so that is done
/// once a minute.
class StampReader
{
public:
    /// ms since 1970, or -1; `*at` moves behind the comma.
    qint64 read(const char **at)
    {
        int parts[7] = {};
        const char marks[] = {'.', '.', ' ', ':', ':', '.', ','};
        for (int i = 0; i < 7; ++i) {
            parts[i] = digits(at, i < 6 ? 2 : 3);
            if (parts[i] < 0 || !skip(at, marks[i]))
                return -1;
        }
        if (parts[5] > 59)
            return -1;
        if (!std::equal(parts, parts + 5, m_parts)) {
            std::copy(parts, parts + 5, m_parts);
            const QDate date(2000 + parts[0], parts[1], parts[2]);
            const QTime time(parts[3], parts[4]);
            m_minuteMs = date.isValid() && time.isValid() ? QDateTime(date, time).toMSecsSinceEpoch() : -1;
        }
        return m_minuteMs < 0 ? -1 : m_minuteMs + parts[5] * 1000 + parts[6];
    }

private:
    int m_parts[5] = {-1, -1, -1, -1, -1};
    qint64 m_minuteMs = -1;
};

/// Reads `count` whole numbers with a comma behind each.
bool readNumbers(const char **at, int count, int *numbers)
{
    for (int i = 0; i < count; ++i) {
        const bool isNegative = skip(at, '-');
        const int value = digits(at, mostDigits);
        if (value < 0 || !skip(at, ','))
            return false;
        numbers[i] = isNegative ? -value : value;
    }
    return true;
}

bool isLineEnd(const char *at)
{
    return *at == '\r' || *at == '\n';
}

/// The lines of one day, with the time of each; the text begins behind the stamp.
using LineTaker = std::function<void(qint64 timeMs, const char *text)>;

void readFile(const QString &path, qint64 beginMs, qint64 endMs, const LineTaker &take)
{
    QFile file(path);
    if (QFileInfo(path).lastModified().toMSecsSinceEpoch() < beginMs || !file.open(QIODevice::ReadOnly))
        return;
    if (file.size() > mostBytes)
        file.seek(file.size() - mostBytes);
    StampReader stamps;
    char line[longestLine];
    while (file.readLine(line, sizeof line) > 0) {
        const char *at = line;
        const qint64 time = stamps.read(&at);
        if (time > beginMs && time <= endMs)
            take(time, at);
    }
}

void readLog(const QString &name, qint64 endMs, const LineTaker &take)
{
    for (int generation = logGenerations; generation >= 0; --generation) {
        const QString file = generation ? name + QString::number(generation) : name;
        readFile(logPath(file), endMs - trendSpanMs, endMs, take);
    }
}

int bucketAt(qint64 timeMs, qint64 endMs)
{
    const qint64 since = timeMs - (endMs - trendSpanMs) - 1;
    return int(qBound(qint64{0}, since * trendBuckets / trendSpanMs, qint64{trendBuckets - 1}));
}

void addTo(TrendCurve *curve, int at, int value, int set)
{
    TrendBucket &bucket = curve->buckets[size_t(at)];
    bucket.low = bucket.isFilled ? std::min(bucket.low, value) : value;
    bucket.high = bucket.isFilled ? std::max(bucket.high, value) : value;
    bucket.last = value;
    bucket.set = set;
    bucket.isFilled = curve->hasData = true;
}

/// A line in which a silent board left its columns out does not tell which ones: it has to be whole.
void readTemps(TrendData *data)
{
    readLog(QStringLiteral("temp.csv"), data->endMs, [data](qint64 time, const char *text) {
        int numbers[2 * trendTempZones];
        if (!readNumbers(&text, 2 * trendTempZones, numbers) || !isLineEnd(text))
            return;
        for (size_t zone = 0; zone < trendTempZones; ++zone)
            addTo(&data->temps[zone], bucketAt(time, data->endMs), numbers[2 * zone], numbers[2 * zone + 1]);
    });
}

/// Pressures below the room's are logged as 16-bit numbers without a sign.
void readAir(TrendData *data)
{
    readLog(QStringLiteral("air.csv"), data->endMs, [data](qint64 time, const char *text) {
        int numbers[trendAirValues];
        if (!skip(&text, ',') || !readNumbers(&text, trendAirValues, numbers) || !skip(&text, ','))
            return;
        for (size_t i = 0; i < trendAirValues; ++i) {
            const int value = i < trendPressures ? qint16(quint16(numbers[i])) : numbers[i];
            addTo(&data->air[i], bucketAt(time, data->endMs), value, 0);
        }
    });
}

/// A row is "id","text".
void readEvents(TrendData *data)
{
    constexpr int idLength = 8;
    readLog(QStringLiteral("event.csv"), data->endMs, [data](qint64 time, const char *text) {
        const QString row = QString::fromLocal8Bit(text).trimmed();
        const QString rest = row.mid(idLength + 2);
        if (!row.startsWith(QLatin1Char('"')) || !rest.startsWith(QLatin1String(",\"")))
            return;
        const int end = rest.endsWith(QLatin1Char('"')) ? 1 : 0;
        data->events << TrendEvent{time, rest.mid(2, rest.size() - 2 - end).trimmed()};
        if (data->events.size() > 2 * mostEvents)
            data->events.remove(0, mostEvents);
    });
    std::stable_sort(data->events.begin(), data->events.end(),
                     [](const TrendEvent &a, const TrendEvent &b) { return a.timeMs < b.timeMs; });
    if (data->events.size() > mostEvents)
        data->events.remove(0, data->events.size() - mostEvents);
}
} // namespace

const TrendBucket *TrendCurve::newest() const
{
    for (size_t at = trendBuckets; at-- > 0;)
        if (buckets[at].isFilled)
            return &buckets[at];
    return nullptr;
}

TrendData readTrends(qint64 nowMs)
{
    TrendData data;
    data.endMs = nowMs;
    readTemps(&data);
    readAir(&data);
    readEvents(&data);
    return data;
}
