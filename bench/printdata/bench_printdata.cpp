// What the program adds to the bare work on a layer's pictures. Ends with 1 when a limit is missed.

#include "frame/Folders.h"
#include "printdata/SliceToImage.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <functional>
#include <map>
#include <vector>
#include <zlib.h>

namespace
{
constexpr double maximumDecode = 1.15; // reading and decoding a pair to its four uncompress calls
constexpr double maximumPicture = 1.5; // cuts and dot count to the bare row work
constexpr int width = 7008;
constexpr int rows = 5280;
constexpr int passCnt = 4;
constexpr int rowBytes = width / 8;
constexpr int turns = 40;
constexpr int layer = 1;
const QString model = QStringLiteral("bench.tzl");

using Bytes = std::vector<Bytef>;

/// Rings of a filled part, or the raster that carries what overhangs, as the slicer makes them.
Bytes picture(bool structure)
{
    Bytes bits(size_t(rowBytes) * rows);
    for (int y = 0; y < rows; ++y) {
        for (int x = 0; x < width; ++x) {
            const int cellX = x % 1400 - 700;
            const int cellY = y % 1320 - 660;
            const double radius = std::hypot(cellX, cellY) + 12 * std::sin(std::atan2(cellY, cellX) * 9);
            const bool part = radius > 320 && radius < 600;
            const bool raster = radius < 650 && !part && (x / 3 + y / 3) % 2 == 0;
            if (structure ? part : raster)
                bits[size_t(y) * rowBytes + size_t(x / 8)] |= Bytef(1u << (x % 8));
        }
    }
    return bits;
}

Bytes packed(const Bytes &bytes)
{
    uLongf size = compressBound(bytes.size());
    Bytes out(size);
    if (compress(out.data(), &size, bytes.data(), bytes.size()) != Z_OK)
        std::abort();
    out.resize(size);
    return out;
}

/// One picture in the stages of its file.
struct Stages {
    Bytes bits;
    Bytes inner;
    Bytes outer;

    explicit Stages(bool structure) : bits(picture(structure)), inner(packed(bits)), outer(packed(inner)) {}
    void write(const QString &path) const
    {
        char head[20] = {};
        qToLittleEndian(quint32(outer.size()), head + 12);
        qToLittleEndian(quint32(inner.size()), head + 16);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(head, sizeof head) != qint64(sizeof head) ||
            file.write(reinterpret_cast<const char *>(outer.data()), qint64(outer.size())) !=
                qint64(outer.size()))
            std::abort();
    }
};

/// A model in an installation folder of its own, with both files of one layer.
struct Installation {
    QTemporaryDir folder;
    Stages support{false};
    Stages structure{true};

    Installation()
    {
        QDir(folder.path()).mkpath(QStringLiteral("install/model"));
        QDir::setCurrent(folder.filePath(QStringLiteral("install")));
        QDir().mkpath(sliceFolder(model));
        const QByteArray settings =
            QStringLiteral("pixelsX=%1\npixelsY=%2\npassCnt=%3\n").arg(width).arg(rows).arg(passCnt).toUtf8();
        char header[84] = {};
        qToLittleEndian(quint64(84), header + 52);
        qToLittleEndian(quint64(settings.size()), header + 60);
        QFile file(modelPath(model));
        if (!file.open(QIODevice::WriteOnly) || file.write(header, sizeof header) < 0 ||
            file.write(settings) < 0)
            std::abort();
        file.close();
        if (sliceToImage()->loadModelInfo(modelPath(model)) != 0)
            std::abort();
        support.write(sliceFolder(model) + QStringLiteral("/slice_s%1").arg(layer));
        structure.write(sliceFolder(model) + QStringLiteral("/slice_m%1").arg(layer));
    }
};

Installation &installation()
{
    static Installation instance;
    return instance;
}

double median(std::vector<double> &values)
{
    std::nth_element(values.begin(), values.begin() + long(values.size() / 2), values.end());
    return values[values.size() / 2];
}

double milliseconds(const std::function<void()> &work)
{
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/// One after the other, so that neither has the quieter machine; medians do not mind another program's turn.
void compare(benchmark::State &state, const std::function<void()> &bare, const std::function<void()> &own)
{
    std::vector<double> bareTimes;
    std::vector<double> ownTimes;
    bare(); // the first touch of memory belongs to the model, not to the layer
    own();
    for (auto _ : state) {
        bareTimes.push_back(milliseconds(bare));
        ownTimes.push_back(milliseconds(own));
    }
    state.counters["bare_ms"] = median(bareTimes);
    state.counters["own_ms"] = median(ownTimes);
}

void unpack(const Stages &stages, Bytes *inner, Bytes *bits)
{
    uLongf size = inner->size();
    uncompress(inner->data(), &size, stages.outer.data(), stages.outer.size());
    size = bits->size();
    uncompress(bits->data(), &size, inner->data(), inner->size());
    benchmark::DoNotOptimize(bits->data());
}

void decodePair(benchmark::State &state)
{
    const Installation &files = installation();
    Bytes supportInner(files.support.inner.size());
    Bytes structureInner(files.structure.inner.size());
    Bytes supportBits(files.support.bits.size());
    Bytes structureBits(files.structure.bits.size());
    compare(
        state,
        [&] {
            unpack(files.support, &supportInner, &supportBits);
            unpack(files.structure, &structureInner, &structureBits);
        },
        [&] {
            if (!sliceToImage()->getLayerImage(layer))
                state.SkipWithError("layer not read");
        });
}

/// The bare work: what any program must do with these rows, in the plainest form.
class BareRows
{
public:
    BareRows(const Bytes &support, const Bytes &structure) : m_layers{&support, &structure}
    {
        for (unsigned byte = 0; byte < 256; ++byte) {
            for (unsigned bit = 0; bit < 8; ++bit)
                m_mirrored[byte] |= Bytef(((byte >> bit) & 1u) << (7 - bit));
        }
    }
    void cut(int phase, bool forward)
    {
        for (const Bytes *bits : m_layers) {
            std::memset(m_pass.data(), 0, m_pass.size());
            for (int row = 0; row < passRows; ++row)
                std::memcpy(&m_pass[size_t(row) * rowBytes],
                            &(*bits)[size_t(row * passCnt + phase) * rowBytes], rowBytes);
            for (int row = 0; row < passRows && !forward; ++row)
                mirror(&m_pass[size_t(row) * rowBytes], &m_turned[size_t(row) * rowBytes]);
            benchmark::DoNotOptimize(m_pass.data());
            benchmark::DoNotOptimize(m_turned.data());
        }
    }
    void count()
    {
        quint64 dots = 0;
        for (int row = 0; row < rows; row += 2) {
            const Bytef *bytes = &(*m_layers[1])[size_t(row) * rowBytes];
            for (int at = 0; at + 8 <= rowBytes; at += 8) {
                quint64 word;
                std::memcpy(&word, bytes + at, 8);
                dots += quint64(__builtin_popcountll(word));
            }
        }
        benchmark::DoNotOptimize(dots);
    }

private:
    void mirror(const Bytef *from, Bytef *to) const
    {
        for (int at = 0; at < rowBytes; ++at)
            to[rowBytes - 1 - at] = m_mirrored[from[at]];
    }

    const Bytes *m_layers[2];
    Bytef m_mirrored[256] = {};
    Bytes m_pass = Bytes(size_t(passRows) * rowBytes);
    Bytes m_turned = m_pass;
};

void cutAndCount(benchmark::State &state)
{
    const Installation &files = installation();
    BareRows bare(files.support.bits, files.structure.bits);
    sliceToImage()->getLayerImage(layer);
    QImage structure;
    QImage support;
    compare(
        state,
        [&] {
            for (int pass = 0; pass < 4; ++pass)
                bare.cut(pass, pass % 2 == 1);
            bare.count();
        },
        [&] {
            for (int pass = 0; pass < 4; ++pass) {
                sliceToImage()->getPassImage(&structure, &support, pass, 0, pass % 2 == 1);
                benchmark::DoNotOptimize(structure.constBits());
            }
            benchmark::DoNotOptimize(sliceToImage()->calcDotCount(1e30));
        });
}

BENCHMARK(decodePair)->Iterations(turns)->Unit(benchmark::kMillisecond);
BENCHMARK(cutAndCount)->Iterations(turns)->Unit(benchmark::kMillisecond);

/// Keeps the ratios that the limits are about.
class Ratios : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run> &runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run &run : runs) {
            const auto bare = run.counters.find("bare_ms");
            const auto own = run.counters.find("own_ms");
            if (!run.error_occurred && bare != run.counters.end() && own != run.counters.end())
                m_ratios[run.run_name.function_name] = own->second.value / bare->second.value;
        }
    }
    bool hold(const char *what, const std::string &name, double limit) const
    {
        const auto ratio = m_ratios.find(name);
        const bool good = ratio != m_ratios.end() && ratio->second <= limit;
        std::printf("%-40s %6.2f (limit %.2f)%s\n", what, ratio == m_ratios.end() ? 0 : ratio->second, limit,
                    good ? "" : "  MISSED");
        return good;
    }

private:
    std::map<std::string, double> m_ratios;
};
} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    Ratios ratios;
    benchmark::RunSpecifiedBenchmarks(&ratios);
    bool good = ratios.hold("layer pair to bare uncompress", "decodePair", maximumDecode);
    good = ratios.hold("cuts and dot count to bare row work", "cutAndCount", maximumPicture) && good;
    return good ? 0 : 1;
}
