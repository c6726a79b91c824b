#include "commands/TemperatureTable.h"

#include "commands/Arguments.h"
#include "commands/Session.h"
#include "link/Failure.h"

#include <QMap>
#include <algorithm>
#include <iterator>

namespace
{
constexpr quint8 machineCommand = 0xAA;
constexpr quint8 readRow = 2;
constexpr quint8 writeRow = 3;

// The record: number of the row, nine head sensors, then ten bytes a group: board, command, seven zones, a
// spare one.
constexpr int recordSize = 256;
constexpr int headsAt = 1;
constexpr int groupsAt = 20;
constexpr int groupSize = 10;
constexpr int zonesInGroup = 2;
constexpr int heads = 3;
constexpr int sensors = 3;
constexpr int zones = 7;

struct Group {
    const char *key; ///< the part of the machine, and the command that reads it
    char board;
};
constexpr Group groups[] = {{"ink31", 3},  {"ink32", 3},  {"ink33", 3}, {"ink34", 3},
                            {"head41", 6}, {"head43", 6}, {"air32", 5}, {"air71", 5}};

/// What the zones heat that have something to heat.
const QMap<QString, QString> &places()
{
    static const QMap<QString, QString> names{
        {"ink31.1", "support ink tube 1"},
        {"ink31.2", "support ink tube 2"},
        {"ink31.3", "support ink tube 3"},
        {"ink31.4", "structure ink tube 1"},
        {"ink31.5", "structure ink tube 2"},
        {"ink31.6", "structure ink tube 3"},
        {"ink32.1", "structure valve island 1"},
        {"ink32.2", "structure valve island 2"},
        {"ink32.3", "structure barrel 1"},
        {"ink32.4", "structure barrel 2"},
        {"ink32.5", "structure tube output valve"},
        {"ink33.1", "support valve island 1"},
        {"ink33.2", "support valve island 2"},
        {"ink33.3", "support barrel 1"},
        {"ink33.4", "support barrel 2"},
        {"ink33.5", "support tube output valve"},
        {"head41.2", "head 1 brass"},
        {"head41.3", "head 2 brass"},
        {"head41.4", "head 3 brass"},
        {"head43.2", "leveller roller"},
        {"head43.3", "leveller scraper"},
        {"head43.4", "leveller chamber waste outlet"},
        {"head43.5", "waste tube"},
        {"air32.2", "ink stack left (1 is off)"},
        {"air32.3", "ink stack right (1 is off)"},
        {"head1.1", "head 1 sensor 1"},
        {"head1.2", "head 1 sensor 2"},
        {"head1.3", "head 1 sensor 3"},
        {"head2.1", "head 2 sensor 1"},
        {"head2.2", "head 2 sensor 2"},
        {"head2.3", "head 2 sensor 3"},
        {"head3.1", "head 3 sensor 1"},
        {"head3.2", "head 3 sensor 2"},
        {"head3.3", "head 3 sensor 3"},
    };
    return names;
}

QVector<Zone> allZones()
{
    QVector<Zone> all;
    const auto add = [&](const QString &group, int zone, int offset) {
        const QString key = QStringLiteral("%1.%2").arg(group).arg(zone);
        all << Zone{key, places().value(key), offset};
    };
    for (int group = 0; group < int(std::size(groups)); ++group) {
        for (int zone = 1; zone <= zones; ++zone)
            add(QLatin1String(groups[group].key), zone,
                groupsAt + group * groupSize + zonesInGroup + zone - 1);
    }
    for (int head = 1; head <= heads; ++head) {
        for (int sensor = 1; sensor <= sensors; ++sensor)
            add(QStringLiteral("head%1").arg(head), sensor, headsAt + (head - 1) * sensors + sensor - 1);
    }
    return all;
}

QByteArray readRecord(Session &session, int profile)
{
    const QByteArray record = session.link().binary(machineCommand, readRow, QByteArray(1, char(profile)));
    bool known = record.size() == recordSize;
    for (int group = 0; known && group < int(std::size(groups)); ++group)
        known = record.at(groupsAt + group * groupSize) == groups[group].board;
    if (!known)
        throw Failure{Exit::Refused,
                      QStringLiteral("The machine's temperature table has a layout that is not known "
                                     "here; it is left alone.")};
    return record;
}
} // namespace

const QVector<const char *> &profileNames()
{
    static const QVector<const char *> names{"start", "printing", "warm", "measured"};
    return names;
}

int profileNumber(const QString &word)
{
    for (int i = 0; i < profileNames().size(); ++i) {
        if (word == QLatin1String(profileNames()[i]) || word == QString::number(i))
            return i;
    }
    throw Failure{Exit::Usage,
                  QStringLiteral("There is no profile \"%1\"; there are start, printing, warm and "
                                 "measured.")
                      .arg(word)};
}

const QVector<Zone> &temperatureZones()
{
    static const QVector<Zone> zones = allZones();
    return zones;
}

QJsonObject readTemperatures(Session &session, int profile)
{
    const QByteArray record = readRecord(session, profile);
    QJsonObject degrees;
    for (const Zone &zone : temperatureZones())
        degrees[zone.key] = int(quint8(record.at(zone.offset)));
    return degrees;
}

void writeTemperatures(Session &session, int profile, const QJsonObject &degrees)
{
    QByteArray record = readRecord(session, profile);
    record[0] = char(profile);
    for (const Zone &zone : temperatureZones()) {
        const QJsonValue value = degrees[zone.key];
        if (!value.isUndefined())
            record[zone.offset] = char(value.toInt());
    }
    session.link().binary(machineCommand, writeRow,
                          record); // its answer shows another row, so it is read again
    if (readRecord(session, profile).mid(headsAt) != record.mid(headsAt))
        throw Failure{Exit::Refused, QStringLiteral("The machine did not take the temperatures of \"%1\".")
                                         .arg(QLatin1String(profileNames()[profile]))};
}

void checkTemperatures(const QJsonObject &degrees, const QString &where)
{
    for (const QString &key : degrees.keys()) {
        const auto &zones = temperatureZones();
        const bool known =
            std::any_of(zones.begin(), zones.end(), [&](const Zone &zone) { return key == zone.key; });
        if (!known)
            throw Failure{Exit::Usage,
                          QStringLiteral("%1: there is no zone \"%2\"; \"peloractl temps get\" lists them.")
                              .arg(where, key)};
        integerOf(degrees[key].toVariant().toString(), QStringLiteral("%1: zone %2").arg(where, key), 0, 255);
    }
}
