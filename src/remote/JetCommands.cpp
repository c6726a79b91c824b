// Firing jets in patterns, and the drive waveform of the heads. The library judges chain and row.

#include "engine/HibLibrary.h"
#include "platform/Log.h"
#include "remote/Jets.h"
#include "remote/RemoteCall.h"
#include "remote/RemoteCommands.h"
#include "remote/WireNumbers.h"

#include <QJsonArray>

#include <cstdio>

void startJets(int chain, float hertz, int count)
{
    lockHibAutofireStart(chain, hertz, 0, 1, count);
}

namespace
{
using Knots = std::vector<HibWaveformKnot>;

/// Jets stand in 16 columns; a character is a jet of one of them.
void maskJets(int chain, qint64 row, const QString &jets)
{
    for (int i = 0; i < jets.size(); ++i)
        setJet(chain, row + 1 + jetColumns * qint64(i), jets.at(i) != QLatin1Char('0'));
}

QJsonArray toJson(const Knots &knots)
{
    QJsonArray array;
    for (const HibWaveformKnot &knot : knots) {
        array.append(QJsonObject{{"timeUs", double(knot.time)},
                                 {"voltageV", double(knot.voltage)},
                                 {"drive", knot.drive},
                                 {"connect", knot.connect},
                                 {"scalable", knot.scalable != 0},
                                 {"reference", knot.reference != 0},
                                 {"normRegion", knot.normRegion}});
    }
    return array;
}

/// "drive" and "connect" are the library's own and stay.
void overwrite(Knots *knots, const QJsonArray &array)
{
    const int count = std::min(int(knots->size()), array.size());
    for (int i = 0; i < count; ++i) {
        const QJsonObject given = array.at(i).toObject();
        HibWaveformKnot &knot = (*knots)[size_t(i)];
        knot.time = wireNumber<float>(given["timeUs"]);
        knot.voltage = wireNumber<float>(given["voltageV"]);
        knot.reference = given["reference"].toBool();
        knot.scalable = given["scalable"].toBool();
        knot.normRegion = wireNumber<int>(given["normRegion"]);
    }
}

void print(const Knots &knots)
{
    for (size_t i = 0; i < knots.size(); ++i) {
        const HibWaveformKnot &knot = knots[i];
        if (!(knot.time > 0))
            continue;
        std::printf("===========================csocket set waveKnot %zu\n"
                    "timeUs:%f\nvoltageV:%f\nscalable:%d\nreference:%d\nnormRegion:%d\n"
                    "===================================\n",
                    i, double(knot.time), double(knot.voltage), knot.scalable, knot.reference,
                    int(knot.normRegion));
    }
    std::fflush(stdout);
}

/// A waveform that could not be read is not written: its own fields would be lost.
int setWaveform(int chain, Knots *knots, const QJsonArray &given)
{
    if (const int error = lockHibGetWaveform(chain, mainWaveform, knots->data())) {
        LOG_WARNING(QStringLiteral("waveform of head %1 cannot be read: %2").arg(chain).arg(error));
        return error;
    }
    overwrite(knots, given);
    print(*knots);
    return lockHibSetWaveform(chain, mainWaveform, knots->data());
}
} // namespace

void setJet(int chain, qint64 row, bool on)
{
    if (row == int(row)) // else no head could have it
        lockHibSetAutofireMask(chain, int(row), on);
}

void injectCommand(const RemoteCall &call)
{
    const int chain = wireNumber<int>(call["nHibChainNum"]);
    const auto hertz = wireNumber<float>(call["Hz"]);
    if (hertz == 0) {
        for (int row = 1; row <= jetRows; ++row)
            setJet(1, row, false); // chain 1, whichever is stopped
        lockHibAutofireStop(chain);
    } else if (hertz > 0) {
        maskJets(chain, wireNumber<int>(call["Row"]), call["Jets"].toString());
        startJets(chain, hertz, 0);
    }
    call.reply(call.request(), ReplyHead::Echo);
}

void waveFormCommand(const RemoteCall &call)
{
    const int chain = wireNumber<int>(call["nHibChainNum"]);
    const int count = lockHibWaveformMaxKnotCount(chain);
    const QString action = call["Action"].toString();
    QJsonObject answer{{"WaveKnotCount", count}};
    if (count > maxWaveformKnots)
        LOG_WARNING(QStringLiteral("waveform of head %1 claims %2 knots").arg(chain).arg(count));
    if (count >= minWaveformKnots && count <= maxWaveformKnots) {
        Knots knots(size_t(count), HibWaveformKnot{});
        if (action == QLatin1String("Get")) {
            lockHibGetWaveform(chain, mainWaveform, knots.data());
            answer.insert(QStringLiteral("WaveKnots"), toJson(knots));
        } else if (action == QLatin1String("Set")) {
            answer.insert(QStringLiteral("SetWaveform"),
                          setWaveform(chain, &knots, call["WaveKnots"].toArray()));
        } else {
            return;
        }
    }
    call.reply(answer, ReplyHead::Echo);
}
