#pragma once
// Cuts the mesh at the middle of a layer and fills what is inside, bit by bit, within the part's own window.
#include "TzlReader.h"

/// The part of the picture that holds the part, in whole 64-bit words. Row 0 is the picture's top row.
struct Window {
    int firstWord = 0, words = 0; ///< columns 64 * firstWord and on
    int firstRow = 0, rows = 0;
    size_t cells() const { return size_t(words) * 64 * size_t(rows); }
};

/// One bit a cell; the lowest bit of a word is the leftmost column.
using Bits = std::vector<uint64_t>;

class MeshSlicer
{
public:
    /// The model must outlive the slicer.
    explicit MeshSlicer(const Model &model);
    const Window &window() const { return m_window; }
    /// Fills rows firstRow to endRow - 1 of the window's `bits` for a layer counted from 1. Any thread.
    void slice(int layer, int firstRow, int endRow, Bits *bits) const;

private:
    struct Crossing {
        double x; ///< columns
        int direction;
    };
    struct Rows {
        int first, end;
        std::vector<std::vector<Crossing>> crossings;
    };
    double cutHeight(int layer) const;
    void place();
    void sortIntoSlabs();
    void cut(const Model::Triangle &triangle, double z, Rows *rows) const;
    void addSegment(std::array<double, 2> from, std::array<double, 2> to, int direction, Rows *rows) const;
    void fillRow(std::vector<Crossing> *crossings, uint64_t *row) const;
    void fillSpan(double from, double to, uint64_t *row) const;

    const Model &m_model;
    Window m_window;
    std::vector<std::vector<uint32_t>> m_slabs; ///< triangles that reach into each run of layers
};
