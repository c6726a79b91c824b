#include "Report.h"

#include "Machine.h"
#include "PartPictures.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>
#include <algorithm>
#include <cmath>

namespace
{
constexpr int picturesByDefault = 5;

QJsonObject distribution(std::vector<double> values)
{
    if (values.empty())
        return {{"count", 0}, {"median", 0}};
    std::sort(values.begin(), values.end());
    const auto at = [&](double share) { return values[size_t(share * double(values.size() - 1))]; };
    return {{"count", int(values.size())},
            {"min", values.front()},
            {"median", at(0.5)},
            {"p90", at(0.9)},
            {"p99", at(0.99)},
            {"max", values.back()}};
}

QJsonArray dotsByHead(const PartRecorder &recorder)
{
    QJsonArray list;
    for (int head = 0; head < geometry::heads; ++head)
        list.append(QJsonObject{{"head", head + 1},
                                {"structure", double(recorder.dots(head, 0))},
                                {"support", double(recorder.dots(head, 1))}});
    return list;
}

/// Between two looks at a moving axis.
constexpr double lookMs = 30;

/// What of each gap is neither motion of the machine nor a sleep that the process states.
QJsonObject programGap(const Machine &machine, double statedSleepMs)
{
    const double scale = machine.clock().scale();
    std::vector<double> walls, motions, rests;
    for (const Gap &gap : machine.recorder().gaps()) {
        const double motionMs = gap.motionSeconds * 1000 / scale;
        walls.push_back(gap.wallMs);
        motions.push_back(motionMs);
        // The program looks at a moving axis with a stated sleep in between, so its wait lasts whole sleeps.
        const double waitMs = std::ceil(gap.motionSeconds * 1000 / lookMs) * lookMs / scale;
        rests.push_back(gap.wallMs - waitMs - statedSleepMs / scale);
    }
    QJsonObject json = distribution(rests);
    json["statedSleepMs"] = statedSleepMs;
    json["wallMs"] = distribution(walls);
    json["motionMs"] = distribution(motions);
    return json;
}

QVector<int> chosenLayers(const ReportOptions &options, int layers)
{
    if (!options.layers.isEmpty() || layers == 0)
        return options.layers;
    QVector<int> chosen;
    for (int i = 0; i < picturesByDefault; ++i) {
        const int layer = 1 + i * (layers - 1) / (picturesByDefault - 1);
        if (!chosen.contains(layer))
            chosen << layer;
    }
    return chosen;
}

QString writeParts(const PartRecorder &recorder, const ReportOptions &options)
{
    QDir().mkpath(options.partsFolder);
    QString error;
    if (!writePasses(options.partsFolder + "/passes.bin", recorder.passes(), &error))
        return error;
    for (int layer : chosenLayers(options, int(recorder.layers()))) {
        const QString file = QStringLiteral("%1/layer%2.png").arg(options.partsFolder).arg(layer);
        if (layer >= 1 && layer <= int(recorder.layers()) && !layerPicture(recorder, layer).save(file))
            return file + " cannot be written";
    }
    const QString file = options.partsFolder + "/part.png";
    return partPicture(recorder).save(file) ? QString() : file + " cannot be written";
}
} // namespace

QJsonObject reportOf(const Machine &machine, const ReportOptions &options)
{
    const PartRecorder &recorder = machine.recorder();
    return {{"layers", int(recorder.layers())},
            {"passes", int(recorder.passes().size())},
            {"dots", dotsByHead(recorder)},
            {"machineSeconds", machine.now()},
            {"wallSeconds", machine.clock().wall()},
            {"scale", machine.clock().scale()},
            {"programGapMs", programGap(machine, options.statedSleepMs)},
            {"violations", machine.violations().list()},
            {"violationCount", machine.violations().count()}};
}

QString writeReport(const Machine &machine, const ReportOptions &options)
{
    if (!options.partsFolder.isEmpty()) {
        const QString error = writeParts(machine.recorder(), options);
        if (!error.isEmpty())
            return error;
    }
    if (options.file.isEmpty())
        return {};
    QDir().mkpath(QFileInfo(options.file).path());
    QSaveFile file(options.file);
    const QByteArray json = QJsonDocument(reportOf(machine, options)).toJson();
    if (file.open(QIODevice::WriteOnly) && file.write(json) == json.size() && file.commit())
        return {};
    return options.file + ": " + file.errorString();
}
