#pragma once
// Small pictures of pages.

#include <QHash>
#include <QImage>
#include <QVector>

#include <algorithm>

/// With a palette of its most frequent colours, a picture of a page takes a third or less and looks the same.
inline QImage withPalette(const QImage &image, int size)
{
    QHash<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            ++counts[image.pixel(x, y) | 0xff000000];
    QVector<QRgb> colours = counts.keys().toVector();
    std::sort(colours.begin(), colours.end(),
              [&](QRgb a, QRgb b) { return std::make_pair(-counts[a], a) < std::make_pair(-counts[b], b); });
    return image.convertToFormat(QImage::Format_Indexed8, colours.mid(0, size), Qt::AvoidDither);
}
