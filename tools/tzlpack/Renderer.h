#pragma once
// A picture of a mesh without a graphics card: a depth buffer, a key and a fill light, amber wax.
#include "Mesh.h"

#include <QImage>

/// The part from above at an angle, filling a square picture on black. No dot of the part is pure black, and
/// its outline is not mixed with the ground, because the queue shows black as transparent.
QImage renderIcon(const Mesh &mesh, int size);
/// The same view on a dark ground with soft edges.
QImage renderPreview(const Mesh &mesh, int size);
