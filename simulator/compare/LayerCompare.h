#pragma once
// Every printed layer against its sliced one. The comparison goes by where drops fell on the bed and knows
// nothing of how the program cuts a layer into passes.

#include <QJsonObject>
#include <QString>
#include <QVector>

struct CompareOptions {
    QString passes; ///< passes.bin of the machine
    QString ini;    ///< settings of the model
    QString layers; ///< folder of slice_m<N>, slice_s<N>
    /// The sliced layers in the order in which they were printed. Empty: all of them, from `start`.
    QVector<int> sequence;
    int start = 1;
};

struct LayerDifference {
    int position = 0; ///< in the order of printing, from 1
    int layer = 0;
    qint64 missing = 0;   ///< sliced and not printed
    qint64 extra = 0;     ///< printed and not sliced, or astray
    bool levelled = true; ///< all four passes at one height
    qint64 dots = 0;      ///< sliced
};

struct CompareResult {
    QString error; ///< not empty: nothing could be compared
    int printed = 0;
    qint64 dots = 0;
    qint64 differing = 0;
    QVector<LayerDifference> layers;

    bool equal() const { return error.isEmpty() && differing == 0 && printed > 0; }
    QJsonObject toJson() const;
};

CompareResult compareLayers(const CompareOptions &options);
/// "1,2,5-9" to numbers, empty when it is no such list.
QVector<int> readSequence(const QString &text);
