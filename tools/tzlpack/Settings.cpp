#include "Settings.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>
#include <cmath>

namespace
{
constexpr double dpiX = 600;
constexpr double mmPerInch = 25.4;
constexpr double nozzlePitchMm = 0.1688;
constexpr int nozzleRows = 1320;
constexpr int extraBlankPixel = 20;
constexpr int maxPixels = 65536;
constexpr int maxLayers = 20000;
constexpr int leastLayers = 5;          // the machine waits for more than four before it begins
constexpr double gramsPerMm3 = 0.00095; // both waxes, within a percent
constexpr double passSeconds = 6;       // a sweep with its Y step, without the wait before it
constexpr double layerSeconds = 4;      // platform and leveller
constexpr int passesPerLayer = 4;

/// A number option: its name, what --help says, its limits, and where it goes.
struct NumberOption {
    const char *name, *valueName, *help;
    double low, high;
    void (*set)(PackOptions &, double);
};

const NumberOption numberOptions[] = {
    {"pass-cnt", "4|8|12", "Picture rows for one nozzle row (4).", 4, 12,
     [](PackOptions &o, double v) { o.passCnt = int(v); }},
    {"layer-height", "MM", "Layer thickness in mm (0.032).", 0.005, 1,
     [](PackOptions &o, double v) { o.layerHeight = v; }},
    {"pixels-x", "N", "Picture columns without the blank ones (6968).", 8, maxPixels,
     [](PackOptions &o, double v) { o.pixelsX = int(v); }},
    {"pixels-y", "N", "Picture rows (1320 times the pass count).", 8, maxPixels,
     [](PackOptions &o, double v) { o.pixelsY = int(v); }},
    {"wait-x", "MS", "Wait before each pass in ms (500).", 0, 60000,
     [](PackOptions &o, double v) { o.waitXMs = int(v); }},
    {"raft", "N", "Layers of support wax under the part (4).", 0, 1000,
     [](PackOptions &o, double v) { o.raftLayers = int(v); }},
    {"scale", "F", "Factor on the mesh, for one that is not in mm (1).", 1e-6, 1e6,
     [](PackOptions &o, double v) { o.scale = v; }},
};

struct TextOption {
    const char *name, *valueName, *help;
    QString PackOptions::*member;
};

const TextOption textOptions[] = {
    {"out", "FILE", "The model file (the mesh's name with .tzl, in the working directory).",
     &PackOptions::out},
    {"name", "NAME", "The part's name in the settings (the mesh's name).", &PackOptions::name},
    {"machine-type", "T", "The machine that the model is for (Pelora620).", &PackOptions::machineType},
    {"material", "NAME", "Name of the structure wax (Amber).", &PackOptions::material},
};

bool takeNumbers(const QCommandLineParser &parser, PackOptions *options, QString *error)
{
    for (const NumberOption &option : numberOptions) {
        if (!parser.isSet(option.name))
            continue;
        bool ok = false;
        const double value = parser.value(option.name).toDouble(&ok);
        if (!ok || !(value >= option.low && value <= option.high)) {
            *error = QString("--%1 takes a number from %2 to %3")
                         .arg(option.name)
                         .arg(option.low)
                         .arg(option.high);
            return false;
        }
        option.set(*options, value);
    }
    if (options->passCnt % 4 != 0) {
        *error = "--pass-cnt is 4, 8 or 12";
        return false;
    }
    return true;
}

QString printModeName(int passCnt)
{
    return passCnt == 4 ? "Standard" : passCnt == 8 ? "Fine" : "Ultra fine";
}
} // namespace

double PackOptions::columnPitchMm() const
{
    return mmPerInch / dpiX;
}

double PackOptions::rowPitchMm() const
{
    return nozzlePitchMm / passCnt;
}

int PackOptions::rows() const
{
    return pixelsY > 0 ? pixelsY : nozzleRows * passCnt;
}

int PackOptions::layers(double heightMm) const
{
    // A height that is a whole number of layers but for float noise is not given one more.
    return int(std::min(std::ceil(heightMm / layerHeight - 1e-3), 1e9)) + raftLayers;
}

bool readOptions(const QStringList &arguments, PackOptions *options, QString *error)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Makes a .tzl model for the printer from a mesh (STL, OBJ, PLY or 3MF, in mm).");
    parser.addPositionalArgument("mesh", "The mesh file.");
    const QCommandLineOption help = parser.addHelpOption();
    for (const TextOption &option : textOptions)
        parser.addOption({option.name, option.help, option.valueName});
    for (const NumberOption &option : numberOptions)
        parser.addOption({option.name, option.help, option.valueName});
    if (!parser.parse(arguments)) {
        *error = parser.errorText();
        return false;
    }
    if (parser.isSet(help))
        parser.showHelp(0);
    if (parser.positionalArguments().size() != 1) {
        *error = "name one mesh file; --help lists the options";
        return false;
    }
    options->mesh = parser.positionalArguments().first();
    for (const TextOption &option : textOptions)
        if (parser.isSet(option.name))
            options->*option.member = parser.value(option.name);
    if (options->name.isEmpty())
        options->name = QFileInfo(options->mesh).completeBaseName();
    if (options->out.isEmpty())
        options->out = QFileInfo(options->mesh).completeBaseName() + ".tzl";
    return takeNumbers(parser, options, error);
}

bool placeOnBed(const PackOptions &options, Mesh *mesh, QString *error)
{
    mesh->scale(float(options.scale));
    const Mesh::Bounds box = mesh->bounds();
    const QVector3D size = box.size();
    const double width = options.pixelsX * options.columnPitchMm();
    const double depth = options.rows() * options.rowPitchMm();
    // Rounding of float coordinates may not push a part that just fits over the edge.
    constexpr double slack = 1e-3;
    if (!(size.x() <= width + slack && size.y() <= depth + slack)) {
        *error = QString("the part of %1 x %2 mm does not fit the bed of %3 x %4 mm")
                     .arg(double(size.x()), 0, 'f', 2)
                     .arg(double(size.y()), 0, 'f', 2)
                     .arg(width, 0, 'f', 2)
                     .arg(depth, 0, 'f', 2);
        return false;
    }
    const int layers = options.layers(double(size.z()));
    if (layers > maxLayers || layers < leastLayers || size.z() <= 0) {
        *error = QString("the part of %1 mm height makes %2 layers; %3 to %4 can be printed")
                     .arg(double(size.z()))
                     .arg(layers)
                     .arg(leastLayers)
                     .arg(maxLayers);
        return false;
    }
    const QVector3D centre = (box.low + box.high) / 2;
    mesh->move({float(width / 2) - centre.x(), float(depth / 2) - centre.y(), -box.low.z()});
    return true;
}

QByteArray settingsText(const PackOptions &options, const QVector3D &extent, const Volumes &volumes)
{
    const int layers = options.layers(double(extent.z()));
    const double seconds =
        layers * (layerSeconds + passesPerLayer * (passSeconds + options.waitXMs / 1000.0));
    const auto number = [](double value, int digits) { return QString::number(value, 'f', digits); };
    const QString mode = printModeName(options.passCnt);
    const std::pair<const char *, QString> values[] = {
        {"machineType", options.machineType},
        {"modelName", options.name},
        {"waitXTimeout", QString::number(options.waitXMs)},
        {"layerHeight", QString::number(options.layerHeight)},
        {"dpiX", QString::number(dpiX)},
        {"dpiY", number(mmPerInch / options.rowPitchMm(), 4)},
        {"extraBlankPixel", QString::number(extraBlankPixel)},
        {"pixelsX", QString::number(options.pixelsX)},
        {"pixelsY", QString::number(options.rows())},
        {"passCnt", QString::number(options.passCnt)},
        {"modelMaterial", number(volumes.structure * gramsPerMm3, 3)},
        {"supportMaterial", number(volumes.support * gramsPerMm3, 3)},
        {"layerCnt", QString::number(layers)},
        {"raftLayers", QString::number(options.raftLayers)},
        {"printTime", number(seconds, 0)},
        {"extentX", number(double(extent.x()), 2)},
        {"extentY", number(double(extent.y()), 2)},
        {"extentZ", number(double(extent.z()), 2)},
        {"PrintModeName", mode},
        {"printModeName", mode},
        {"modelMaterialName", options.material},
    };
    QTemporaryDir folder;
    const QString path = folder.filePath("settings.ini");
    {
        QSettings settings(path, QSettings::IniFormat);
        for (const auto &value : values)
            settings.setValue(value.first, value.second);
    }
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
