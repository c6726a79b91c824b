#pragma once
// The model file as this tool writes it, little-endian throughout.
//
//   header, 84 bytes
//     0  8  mark "TZLMODEL"            40  8  mesh offset
//     8  4  version                    48  4  zero
//    12  4  CRC-32 of the mesh         52  8  settings offset
//    16  8  icon offset                60  8  settings length
//    24  4  icon length                68  8  mesh length
//    28  8  preview offset             76  8  zero
//    36  4  preview length
//   mesh section
//     0  4  vertices V      4  4  triangles T
//     8  12 V  x, y, z of each vertex as float, mm on the bed; z = 0 is the platform
//        12 T  three vertex numbers of each triangle, counter-clockwise seen from outside
#include <QByteArray>

namespace TzlFormat
{
constexpr char mark[] = "TZLMODEL";
constexpr quint32 version = 1;
constexpr int headerSize = 84;

struct Sections {
    QByteArray icon, preview, settings, mesh;
};

/// The whole file. Any thread.
QByteArray encode(const Sections &sections);
} // namespace TzlFormat
