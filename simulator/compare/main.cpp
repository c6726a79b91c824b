#include "LayerCompare.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QJsonDocument>
#include <QSaveFile>
#include <cstdio>

namespace
{
constexpr int layersShown = 10;

void show(const CompareResult &result)
{
    int shown = 0;
    for (const LayerDifference &layer : result.layers) {
        const bool equal = !layer.missing && !layer.extra && layer.levelled;
        if (equal || ++shown > layersShown)
            continue;
        std::printf("layer %d (printed as number %d): %lld missing, %lld extra%s\n", layer.layer,
                    layer.position, static_cast<long long>(layer.missing),
                    static_cast<long long>(layer.extra),
                    layer.levelled ? "" : ", passes at different heights");
    }
    std::printf("%d layers compared, %lld dots, %lld differ\n", result.printed,
                static_cast<long long>(result.dots), static_cast<long long>(result.differing));
}

bool writeJson(const QString &path, const CompareResult &result)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(result.toJson()).toJson()) > 0 &&
           file.commit();
}
} // namespace

/// 0: equal; 1: dots differ; 2: nothing could be compared.
int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription("Holds the printed layers against the sliced ones, dot for dot.");
    parser.addHelpOption();
    parser.addOptions({{"passes", "passes.bin of the machine.", "file"},
                       {"ini", "Settings of the model.", "file"},
                       {"layers", "Folder of the slicer's layer files.", "folder"},
                       {"sequence", "Layers in the order of printing, as 1,2,3 or 1-50,31-80.", "list"},
                       {"start", "First layer, when all were printed in order.", "layer", "1"},
                       {"json", "Writes the result here.", "file"}});
    parser.process(app);
    CompareOptions options;
    options.passes = parser.value("passes");
    options.ini = parser.value("ini");
    options.layers = parser.value("layers");
    options.sequence = readSequence(parser.value("sequence"));
    options.start = parser.value("start").toInt();
    if (parser.isSet("sequence") && options.sequence.isEmpty()) {
        std::fprintf(stderr, "no list of layers: %s\n", qPrintable(parser.value("sequence")));
        return 2;
    }
    const CompareResult result = compareLayers(options);
    if (parser.isSet("json") && !writeJson(parser.value("json"), result))
        std::fprintf(stderr, "%s cannot be written\n", qPrintable(parser.value("json")));
    if (!result.error.isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(result.error));
        return 2;
    }
    show(result);
    return result.equal() ? 0 : 1;
}
