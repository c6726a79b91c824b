#pragma once
// How much wax a part takes: a column walk over a coarse raster, robust to shells that overlap.
#include "Mesh.h"

struct Volumes {
    double structure = 0; ///< mm3 inside the part
    double support = 0;   ///< mm3 under overhangs, down to the platform
};

/// The part stands on z = 0. Any thread.
Volumes measureVolumes(const Mesh &mesh);
