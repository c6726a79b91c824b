#include "LayerCompare.h"

#include "PrintedLayer.h"
#include "SlicedLayer.h"

#include <QJsonArray>
#include <algorithm>
#include <cmath>

namespace
{
constexpr int layerLimit = 1000000;
constexpr double levelTolerance = 0.5; // micrometres

void addDifference(const LayerBits &sliced, const LayerBits &printed, LayerDifference *difference)
{
    for (int row = 0; row < sliced.height(); ++row) {
        const uint8_t *wanted = sliced.row(row);
        const uint8_t *real = printed.row(row);
        difference->dots += qint64(SparsePlane::countBits(wanted, sliced.stride()));
        if (std::equal(wanted, wanted + sliced.stride(), real))
            continue;
        for (int i = 0; i < sliced.stride(); ++i) {
            difference->missing += __builtin_popcount(wanted[i] & ~real[i] & 0xFF);
            difference->extra += __builtin_popcount(real[i] & ~wanted[i] & 0xFF);
        }
    }
}

/// A layer that was not printed, or one too many, is held against an empty one.
bool compareLayer(const CompareOptions &options, const ModelSettings &settings, const PassRecord *passes,
                  LayerDifference *difference, QString *error)
{
    const LayerBits nothing(settings.width(), settings.pixelsY);
    LayerBits structure = nothing, support = nothing;
    if (difference->layer > 0 &&
        !readSlicedLayer(options.layers, difference->layer, settings, &structure, &support, error))
        return false;
    PrintedLayer printed{nothing, nothing, 0};
    if (passes) {
        printed = putTogether(passes, settings);
        for (int pass = 1; pass < passesPerLayer; ++pass)
            difference->levelled &= std::fabs(passes[pass].z - passes[0].z) < levelTolerance;
    }
    addDifference(structure, printed.structure, difference);
    addDifference(support, printed.support, difference);
    difference->extra += printed.astray;
    return true;
}

QVector<int> expectedSequence(const CompareOptions &options)
{
    if (!options.sequence.isEmpty())
        return options.sequence;
    QVector<int> all;
    for (int layer = options.start; layer <= lastSlicedLayer(options.layers); ++layer)
        all << layer;
    return all;
}
} // namespace

CompareResult compareLayers(const CompareOptions &options)
{
    CompareResult result;
    ModelSettings settings;
    std::vector<PassRecord> passes;
    if (!readSettings(options.ini, &settings, &result.error) ||
        !readPasses(options.passes, &passes, &result.error))
        return result;
    if (passes.size() % passesPerLayer) {
        result.error = QStringLiteral("%1 passes are no whole layers").arg(passes.size());
        return result;
    }
    const QVector<int> sequence = expectedSequence(options);
    result.printed = int(passes.size()) / passesPerLayer;
    for (int i = 0; i < std::max(sequence.size(), result.printed); ++i) {
        LayerDifference difference;
        difference.position = i + 1;
        difference.layer = sequence.value(i);
        const PassRecord *first = i < result.printed ? &passes[size_t(i) * passesPerLayer] : nullptr;
        if (!compareLayer(options, settings, first, &difference, &result.error))
            return result;
        result.dots += difference.dots;
        result.differing += difference.missing + difference.extra + (difference.levelled ? 0 : 1);
        result.layers << difference;
    }
    return result;
}

QJsonObject CompareResult::toJson() const
{
    QJsonArray list;
    for (const LayerDifference &layer : layers) {
        if (layer.missing || layer.extra || !layer.levelled)
            list.append(QJsonObject{{"position", layer.position},
                                    {"layer", layer.layer},
                                    {"missing", double(layer.missing)},
                                    {"extra", double(layer.extra)},
                                    {"levelled", layer.levelled}});
    }
    QJsonObject json{{"equal", equal()},
                     {"layers", printed},
                     {"dots", double(dots)},
                     {"differing", double(differing)},
                     {"differingLayers", list}};
    if (!error.isEmpty()) {
        json["error"] = error;
        json["differing"] = -1;
    }
    return json;
}

QVector<int> readSequence(const QString &text)
{
    QVector<int> numbers;
    for (const QString &part : text.split(',')) {
        bool first = false, last = false;
        const int from = part.section('-', 0, 0).toInt(&first);
        const int to = part.section('-', -1).toInt(&last);
        if (!first || !last || from < 1 || to < from || to > layerLimit)
            return {};
        for (int number = from; number <= to; ++number)
            numbers << number;
    }
    return numbers;
}
