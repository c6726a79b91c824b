#pragma once
// One run of the slicer: looks over the part, then makes the layers from the platform up, on every core.
#include "LayerFile.h"
#include "SupportMap.h"

#include <atomic>
#include <condition_variable>
#include <mutex>

/// A fault to play, for tests of the program that runs the slicer.
struct Fault {
    enum Kind { none, die, stall, rubbish, damage, slow } kind = none;
    int value = 0; ///< layer, or milliseconds a layer
};

/// Reads e.g. "die:9"; false when there is no such fault.
bool parseFault(const std::string &text, Fault *fault);

class SliceJob
{
public:
    SliceJob(const Model &model, const std::string &folder, const Fault &fault);
    /// False with a text when a layer could not be written.
    bool run(std::string *error);

private:
    void analyse();
    void makeLayers();
    bool makeLayer(int layer, Bits *structure, Bits *support);
    void playFault(int layer);
    void finished(int layer);
    void reportProgress();
    void reportLayers();

    const Model &m_model;
    const std::string m_folder;
    const Fault m_fault;
    const int m_threads;
    MeshSlicer m_slicer;
    SupportMap m_map;
    LayerFile m_file;
    std::atomic<int> m_looked{0}; ///< layers looked over, summed over the threads
    std::atomic<int> m_next{1};   ///< next layer to make
    std::atomic<int> m_failed{0}; ///< a layer that could not be written
    std::mutex m_mutex;           ///< workers finish layers while the main thread reports them
    std::condition_variable m_wake;
    std::vector<bool> m_done; ///< under m_mutex
    int m_upTo = 0;           ///< all layers to here are done; under m_mutex
    int m_running = 0;        ///< workers; under m_mutex
};
