#pragma once
// A layer as the slicer left it: two pictures in files that are packed twice.

#include "LayerBits.h"

#include <QString>

/// What of a model's settings places its dots.
struct ModelSettings {
    int pixelsX = 0;
    int pixelsY = 0;
    int blank = 0;
    int passCnt = 0;
    double dpiX = 0;

    int width() const { return (pixelsX + 2 * blank + 31) / 32 * 32; }
    /// Micrometres between two columns, two rows.
    double columnPitch() const { return 25400.0 / dpiX; }
    double rowPitch() const;
    /// Which rows a layer prints: those whose number leaves this rest when divided by the layers that share
    /// them.
    int rowRest(int layer) const;
    int rowStep() const { return passCnt / 4; }
};

bool readSettings(const QString &ini, ModelSettings *settings, QString *error);

/// Reads `slice_m<N>` and `slice_s<N>`, leaves only the rows that layer N prints.
bool readSlicedLayer(const QString &folder, int layer, const ModelSettings &settings, LayerBits *structure,
                     LayerBits *support, QString *error);
/// Highest layer of which files are there, 0 when there is none.
int lastSlicedLayer(const QString &folder);
