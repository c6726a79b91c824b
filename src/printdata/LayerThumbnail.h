#pragma once
// Reduced pictures of a job's layers, made anew from the layer files: nothing that the job uses is touched.

#include "printdata/LayerFile.h"

#include <QColor>
#include <QImage>
#include <QRect>

/// The job whose layers are wanted.
struct LayerSource {
    QString folder;  ///< the model's working folder
    int columns = 0; ///< pixels of a row with its padding, a multiple of 32
    int rows = 0;
    double rowPitch = 1; ///< distance of rows in distances of columns
    QColor structure, support;
};

/// One thread at a time.
class LayerThumbnail
{
public:
    explicit LayerThumbnail(const LayerSource &source);
    /// The part of the bed that has been printed on in the layers asked for so far, seen from above, so that
    /// the scale does not jump from layer to layer. Null when the layer's files cannot be read.
    QImage picture(int layer, const QSize &size);

private:
    using Bits = std::vector<uchar>;
    bool read(char kind, int layer, Bits *bits);
    void widenWindow(const Bits &bits);
    QRectF view(const QSize &size) const;
    const uchar *row(const Bits &bits, int number) const;

    const LayerSource m_source;
    const int m_stride;
    LayerFileReader m_reader;
    Bits m_structure, m_support; ///< bottom row first, as the files hold them
    QRect m_window;              ///< printed on so far
};
