#pragma once
// What the user may choose, and the settings text made of it.
#include "Mesh.h"
#include "Volumes.h"

struct PackOptions {
    QString mesh, out, name;
    QString machineType = "Pelora620";
    QString material = "Amber";
    int passCnt = 4;            ///< picture rows for one nozzle row: 4, 8 or 12
    double layerHeight = 0.032; ///< mm
    int pixelsX = 6968;         ///< columns, without the blank ones at the sides
    int pixelsY = 0;            ///< rows; 0: the whole bed
    int waitXMs = 500;          ///< before each pass
    int raftLayers = 4;         ///< of support wax under the part, so that it can be lifted off the platform
    double scale = 1;

    double columnPitchMm() const;
    double rowPitchMm() const;
    int rows() const;
    /// Of a part of this height, with the raft.
    int layers(double heightMm) const;
};

/// Reads the command line; false with a text for the user. With --help it prints the help and ends the
/// process.
bool readOptions(const QStringList &arguments, PackOptions *options, QString *error);
/// Puts the part in the middle of the bed on the platform; false when it does not fit or is too low to print.
bool placeOnBed(const PackOptions &options, Mesh *mesh, QString *error);
/// The settings text, as QSettings writes it: readable with any text codec.
QByteArray settingsText(const PackOptions &options, const QVector3D &extent, const Volumes &volumes);
