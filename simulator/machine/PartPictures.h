#pragma once
// Pictures of what was built, made of where the drops fell: structure amber, support blue.

#include <QImage>

class PartRecorder;

/// One layer (from 1), cut to what holds dots, a pixel a dot where it fits.
QImage layerPicture(const PartRecorder &recorder, int layer);
/// The part as it stands on the platform, seen from above a corner.
QImage partPicture(const PartRecorder &recorder);
