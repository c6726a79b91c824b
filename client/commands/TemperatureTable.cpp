#include "commands/TemperatureTable.h"

#include "commands/Arguments.h"
#include "commands/Session.h"
#include "link/Failure.h"

#include <algorithm>

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
constexpr char groupBoards[] = {3, 3, 3, 3, 6, 6, 5, 5};

constexpr int head(int board, int sensor)
{
    return headsAt + (board - 1) * 3 + sensor - 1;
}
constexpr int zone(int group, int number)
{
    return groupsAt + group * groupSize + zonesInGroup + number - 1;
}

QByteArray readRecord(Session &session, int profile)
{
    const QByteArray record = session.link().binary(machineCommand, readRow, QByteArray(1, char(profile)));
    bool known = record.size() == recordSize;
    for (int group = 0; known && group < int(sizeof groupBoards); ++group)
        known = record.at(groupsAt + group * groupSize) == groupBoards[group];
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
    static const QVector<Zone> zones{
        {"ink31.1", "support ink tube 1", zone(0, 1)},
        {"ink31.2", "support ink tube 2", zone(0, 2)},
        {"ink31.3", "support ink tube 3", zone(0, 3)},
        {"ink31.4", "structure ink tube 1", zone(0, 4)},
        {"ink31.5", "structure ink tube 2", zone(0, 5)},
        {"ink31.6", "structure ink tube 3", zone(0, 6)},
        {"ink32.1", "structure valve island 1", zone(1, 1)},
        {"ink32.2", "structure valve island 2", zone(1, 2)},
        {"ink32.3", "structure barrel 1", zone(1, 3)},
        {"ink32.4", "structure barrel 2", zone(1, 4)},
        {"ink32.5", "structure tube output valve", zone(1, 5)},
        {"ink33.1", "support valve island 1", zone(2, 1)},
        {"ink33.2", "support valve island 2", zone(2, 2)},
        {"ink33.3", "support barrel 1", zone(2, 3)},
        {"ink33.4", "support barrel 2", zone(2, 4)},
        {"ink33.5", "support tube output valve", zone(2, 5)},
        {"head41.2", "head 1 brass", zone(4, 2)},
        {"head41.3", "head 2 brass", zone(4, 3)},
        {"head41.4", "head 3 brass", zone(4, 4)},
        {"head43.2", "leveller roller", zone(5, 2)},
        {"head43.3", "leveller scraper", zone(5, 3)},
        {"head43.4", "leveller chamber waste outlet", zone(5, 4)},
        {"head43.5", "waste tube", zone(5, 5)},
        {"air32.2", "ink stack left (1 is off)", zone(6, 2)},
        {"air32.3", "ink stack right (1 is off)", zone(6, 3)},
        {"head1.1", "head 1 sensor 1", head(1, 1)},
        {"head1.2", "head 1 sensor 2", head(1, 2)},
        {"head1.3", "head 1 sensor 3", head(1, 3)},
        {"head2.1", "head 2 sensor 1", head(2, 1)},
        {"head2.2", "head 2 sensor 2", head(2, 2)},
        {"head2.3", "head 2 sensor 3", head(2, 3)},
        {"head3.1", "head 3 sensor 1", head(3, 1)},
        {"head3.2", "head 3 sensor 2", head(3, 2)},
        {"head3.3", "head 3 sensor 3", head(3, 3)},
    };
    return zones;
}

QJsonObject readTemperatures(Session &session, int profile)
{
    const QByteArray record = readRecord(session, profile);
    QJsonObject degrees;
    for (const Zone &zone : temperatureZones())
        degrees[QLatin1String(zone.key)] = int(quint8(record.at(zone.offset)));
    return degrees;
}

void writeTemperatures(Session &session, int profile, const QJsonObject &degrees)
{
    QByteArray record = readRecord(session, profile);
    record[0] = char(profile);
    for (const Zone &zone : temperatureZones()) {
        const QJsonValue value = degrees[QLatin1String(zone.key)];
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
        const bool known = std::any_of(zones.begin(), zones.end(),
                                       [&](const Zone &zone) { return key == QLatin1String(zone.key); });
        if (!known)
            throw Failure{Exit::Usage,
                          QStringLiteral("%1: there is no zone \"%2\"; \"peloractl temps get\" lists them.")
                              .arg(where, key)};
        integerOf(degrees[key].toVariant().toString(), QStringLiteral("%1: zone %2").arg(where, key), 0, 255);
    }
}
