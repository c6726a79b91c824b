#include "SliceJob.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>
#include <unistd.h>

namespace
{
// The reader may drop what follows the first line of a chunk, so lines keep this distance, and the last one
// most of all.
constexpr std::chrono::milliseconds lineDistance(50);

/// Faults count layers one by one, which more than one worker would blur.
int threadCount(const Fault &fault)
{
    if (fault.kind != Fault::none && fault.kind != Fault::damage)
        return 1;
    return int(std::clamp(std::thread::hardware_concurrency(), 1u, 8u));
}

void say(const char *format, double value)
{
    std::printf(format, value);
    std::fflush(stdout);
}

void sayLayer(int layer, int of)
{
    std::printf("slice: %d/%d\n", layer, of);
    std::fflush(stdout);
}
} // namespace

bool parseFault(const std::string &text, Fault *fault)
{
    static const struct {
        const char *name;
        Fault::Kind kind;
        bool number;
    } faults[] = {{"die", Fault::die, true},
                  {"stall", Fault::stall, true},
                  {"rubbish", Fault::rubbish, false},
                  {"damage", Fault::damage, true},
                  {"slow", Fault::slow, true}};
    const size_t colon = text.find(':');
    for (const auto &known : faults) {
        if (text.substr(0, colon) != known.name || known.number != (colon != std::string::npos))
            continue;
        fault->kind = known.kind;
        fault->value = known.number ? std::atoi(text.c_str() + colon + 1) : 0;
        return !known.number || fault->value > 0;
    }
    return false;
}

SliceJob::SliceJob(const Model &model, const std::string &folder, const Fault &fault)
    : m_model(model), m_folder(folder), m_fault(fault), m_threads(threadCount(fault)), m_slicer(model),
      m_map(m_slicer), m_file(model, m_slicer.window()), m_done(size_t(model.layerCnt) + 1)
{
}

bool SliceJob::run(std::string *error)
{
    say("progress: %.2f\n", 0.05);
    analyse();
    say("progress: %.2f\n", 1.0);
    std::vector<std::thread> workers;
    m_running = m_threads;
    for (int n = 0; n < m_threads; ++n)
        workers.emplace_back(&SliceJob::makeLayers, this);
    reportLayers();
    for (std::thread &worker : workers)
        worker.join();
    if (m_failed != 0)
        *error = m_folder + ": layer " + std::to_string(m_failed) + " cannot be written";
    return m_failed == 0;
}

void SliceJob::analyse()
{
    // Each worker takes a band of rows, so that none writes where another does.
    const int rows = m_slicer.window().rows;
    std::vector<std::thread> workers;
    for (int n = 0; n < m_threads; ++n)
        workers.emplace_back([this, n, rows] {
            m_map.build(m_model.layerCnt, rows * n / m_threads, rows * (n + 1) / m_threads,
                        [this] { ++m_looked; });
        });
    reportProgress();
    for (std::thread &worker : workers)
        worker.join();
}

void SliceJob::reportProgress()
{
    const int all = m_model.layerCnt * m_threads;
    std::unique_lock<std::mutex> lock(m_mutex);
    while (m_looked < all) {
        m_wake.wait_for(lock, lineDistance, [&] { return m_looked == all; });
        // The end is told by who knows that the map is whole.
        say("progress: %.2f\n", 0.05 + 0.9 * m_looked / all);
    }
}

void SliceJob::makeLayers()
{
    Bits structure(m_slicer.window().cells() / 64), support(structure.size());
    for (int layer = m_next++; layer <= m_model.layerCnt && m_failed == 0; layer = m_next++) {
        playFault(layer);
        if (!makeLayer(layer, &structure, &support)) {
            m_failed = layer;
            break;
        }
        finished(layer);
    }
    std::lock_guard<std::mutex> lock(m_mutex);
    --m_running;
    m_wake.notify_one();
}

bool SliceJob::makeLayer(int layer, Bits *structure, Bits *support)
{
    m_slicer.slice(layer, 0, m_slicer.window().rows, structure);
    m_map.support(layer, *structure, support);
    const bool damaged = m_fault.kind == Fault::damage && m_fault.value == layer;
    // Support last: it is the file by which a reader knows that the layer is there.
    return m_file.write(m_folder, 'm', layer, *structure, damaged) &&
           m_file.write(m_folder, 's', layer, *support);
}

void SliceJob::playFault(int layer)
{
    if (m_fault.kind == Fault::slow)
        std::this_thread::sleep_for(std::chrono::milliseconds(m_fault.value));
    if (m_fault.kind == Fault::rubbish) {
        std::printf("slice: ?/?\nprogress: soon\nslice:\n%s\nlayer \x01\xff %d of many\n",
                    std::string(5000, 'x').c_str(), layer);
        std::fflush(stdout);
    }
    if (layer != m_fault.value)
        return;
    if (m_fault.kind == Fault::die) {
        sayLayer(layer - 1, m_model.layerCnt);
        _exit(3);
    }
    while (m_fault.kind == Fault::stall)
        pause();
}

void SliceJob::finished(int layer)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    m_done[size_t(layer)] = true;
    while (m_upTo < m_model.layerCnt && m_done[size_t(m_upTo) + 1])
        ++m_upTo;
    m_wake.notify_one();
}

void SliceJob::reportLayers()
{
    int told = -1;
    std::unique_lock<std::mutex> lock(m_mutex);
    while (m_running > 0 || told < m_upTo) {
        m_wake.wait(lock, [&] { return m_running == 0 || told < m_upTo; });
        if (told == m_upTo)
            break;
        told = m_upTo;
        lock.unlock();
        std::this_thread::sleep_for(lineDistance);
        sayLayer(told, m_model.layerCnt);
        lock.lock();
    }
}
