#pragma once
// A layer as it lies on the bed: put together from where the drops of its four passes fell.

#include "LayerBits.h"
#include "SlicedLayer.h"
#include "common/PassFile.h"

constexpr int passesPerLayer = 4;

struct PrintedLayer {
    LayerBits structure;
    LayerBits support;
    /// Drops that fell beside every place of the picture, between two places, or twice on one.
    qint64 astray = 0;
};

/// `first` is the first of the layer's four passes.
PrintedLayer putTogether(const PassRecord *first, const ModelSettings &settings);
