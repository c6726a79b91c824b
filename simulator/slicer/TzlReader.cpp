#include "TzlReader.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <zlib.h>

namespace
{
constexpr size_t headerSize = 84;
constexpr double mmPerInch = 25.4;
constexpr int maxPixels = 65536;
constexpr int maxLayers = 65000;  // a column's top is kept in 16 bits
constexpr float farAwayMm = 1e5f; // no bed is this big; keeps cell numbers within an int

struct Span {
    const uint8_t *data;
    uint64_t size;
};

template <typename T> T get(const uint8_t *at)
{
    T value;
    std::memcpy(&value, at, sizeof value);
    return value;
}

/// The section, or nothing when it is not whole in the file.
bool section(const std::string &file, uint64_t offset, uint64_t size, Span *span)
{
    if (offset < headerSize || offset > file.size() || size > file.size() - offset)
        return false;
    *span = {reinterpret_cast<const uint8_t *>(file.data()) + offset, size};
    return true;
}

std::string readMesh(const Span &span, uint32_t crc, Model *model)
{
    if (span.size < 8 || span.size > UINT32_MAX)
        return "the mesh is not whole";
    if (crc32(0, span.data, uInt(span.size)) != crc)
        return "the mesh is damaged";
    const uint64_t points = get<uint32_t>(span.data), triangles = get<uint32_t>(span.data + 4);
    if (8 + 12 * (points + triangles) != span.size || triangles == 0)
        return "the mesh does not have the triangles it announces";
    model->points.resize(points);
    model->triangles.resize(triangles);
    std::memcpy(model->points.data(), span.data + 8, 12 * points);
    std::memcpy(model->triangles.data(), span.data + 8 + 12 * points, 12 * triangles);
    for (const Model::Point &point : model->points)
        for (float value : point)
            if (!(std::fabs(value) < farAwayMm))
                return "the mesh has a point that is nowhere";
    for (const Model::Triangle &triangle : model->triangles)
        for (uint32_t corner : triangle)
            if (corner >= points)
                return "the mesh has a triangle without its points";
    return {};
}

std::map<std::string, double> readNumbers(const Span &text)
{
    std::map<std::string, double> numbers;
    const std::string all(reinterpret_cast<const char *>(text.data), text.size);
    for (size_t at = 0; at < all.size();) {
        const size_t end = std::min(all.find('\n', at), all.size());
        const std::string line = all.substr(at, end - at);
        const size_t equals = line.find('=');
        if (equals != std::string::npos)
            numbers[line.substr(0, equals)] = std::strtod(line.c_str() + equals + 1, nullptr);
        at = end + 1;
    }
    return numbers;
}

std::string readSettings(const Span &text, Model *model)
{
    std::map<std::string, double> numbers = readNumbers(text);
    double dpiX = 0, dpiY = 0, pixelsX = 0, pixelsY = 0, blank = 0, layers = 0, raft = 0;
    const struct {
        const char *key;
        double low, high;
        double *value;
    } wanted[] = {{"layerHeight", 0.001, 10, &model->layerHeight},
                  {"dpiX", 1, 100000, &dpiX},
                  {"dpiY", 1, 100000, &dpiY},
                  {"pixelsX", 1, maxPixels, &pixelsX},
                  {"pixelsY", 1, maxPixels, &pixelsY},
                  {"extraBlankPixel", 0, maxPixels, &blank},
                  {"layerCnt", 1, maxLayers, &layers},
                  {"raftLayers", 0, maxLayers, &raft}};
    for (const auto &want : wanted) {
        *want.value = numbers[want.key];
        if (!(*want.value >= want.low && *want.value <= want.high))
            return std::string("the setting ") + want.key + " is missing or out of range";
    }
    model->columnPitch = mmPerInch / dpiX;
    model->rowPitch = mmPerInch / dpiY;
    model->pixelsX = int(pixelsX);
    model->pixelsY = int(pixelsY);
    model->extraBlankPixel = int(blank);
    model->layerCnt = int(layers);
    model->raftLayers = int(raft);
    return {};
}

std::string readFile(const std::string &file, Model *model)
{
    const auto *head = reinterpret_cast<const uint8_t *>(file.data());
    if (file.size() < headerSize || std::memcmp(head, "TZLMODEL", 8) != 0 || get<uint32_t>(head + 8) != 1)
        return "is not a model of this kind";
    Span settings, mesh;
    if (!section(file, get<uint64_t>(head + 52), get<uint64_t>(head + 60), &settings) ||
        !section(file, get<uint64_t>(head + 40), get<uint64_t>(head + 68), &mesh))
        return "is cut short";
    const std::string bad = readSettings(settings, model);
    return bad.empty() ? readMesh(mesh, get<uint32_t>(head + 12), model) : bad;
}
} // namespace

bool readModel(const std::string &path, Model *model, std::string *error)
{
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        *error = path + ": cannot be opened";
        return false;
    }
    std::string file;
    try {
        file.assign(std::istreambuf_iterator<char>(stream), {});
    } catch (const std::exception &) { // a folder in the file's place
    }
    const std::string bad = readFile(file, model);
    *error = path + ": " + bad;
    return bad.empty();
}
