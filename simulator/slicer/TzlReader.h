#pragma once
// The model file as the slicer reads it, little-endian.
//
//   header, 84 bytes
//     0  8  mark "TZLMODEL"     40  8  mesh offset
//     8  4  version 1           52  8  settings offset
//    12  4  CRC-32 of the mesh  60  8  settings length
//                               68  8  mesh length
//   mesh: V and T as 32-bit counts, V points of three floats (mm), T triangles of three point numbers
//   settings: ini text, its general section
#include <array>
#include <cstdint>
#include <string>
#include <vector>

struct Model {
    using Point = std::array<float, 3>;
    using Triangle = std::array<uint32_t, 3>;
    std::vector<Point> points; ///< mm on the bed, z from the platform
    std::vector<Triangle> triangles;

    double layerHeight = 0;  ///< mm
    double columnPitch = 0;  ///< mm
    double rowPitch = 0;     ///< mm
    int pixelsX = 0;         ///< columns between the blank ones
    int pixelsY = 0;         ///< rows
    int extraBlankPixel = 0; ///< blank columns at each side
    int layerCnt = 0;        ///< with the raft
    int raftLayers = 0;      ///< of support wax under the part
};

/// Reads and checks the file; false with a text for the user.
bool readModel(const std::string &path, Model *model, std::string *error);
