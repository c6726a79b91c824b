#pragma once
// The slicer's layer files: where they lie and what they unpack to.

#include <QString>
#include <vector>

/// The file of a layer in a model's working folder; `kind` is 's' for support, 'm' for structure.
QString layerFile(const QString &folder, char kind, int layer);

/// Unpacks layer files and keeps its buffers, which only grow, for the next. One thread at a time.
class LayerFileReader
{
public:
    /// Unpacks a file to `bits`, bottom row first. `*bytes` is the room there, and then what was needed of
    /// it. False, with a log line, on damage.
    bool unpack(const QString &path, uchar *bits, qint64 *bytes);

private:
    std::vector<uchar> m_packed; // a file's outer stream
    std::vector<uchar> m_inner;  // and its content
};
