#pragma once
// The machine's table of set-points: four rows of zones in degrees, each row one record on the wire.

#include <QJsonObject>
#include <QVector>

class Session;

struct Zone {
    QString key;   ///< "ink31.1": group and zone
    QString place; ///< empty when nothing is known to be heated there
    int offset;    ///< of its byte in the record
};

constexpr int measuredProfile = 3;
constexpr int settableProfiles = 3;
const QVector<const char *> &profileNames(); ///< start, printing, warm, measured
/// By name or number; throws a Failure.
int profileNumber(const QString &word);

/// All that the table has room for.
const QVector<Zone> &temperatureZones();

/// Zone keys to degrees.
QJsonObject readTemperatures(Session &session, int profile);
/// Writes what `degrees` names, leaves the rest, and reads it back.
void writeTemperatures(Session &session, int profile, const QJsonObject &degrees);
/// Throws a Failure for unknown zones and for what is no whole number from 0 to 255.
void checkTemperatures(const QJsonObject &degrees, const QString &where);
