#pragma once
// The part as it stands, in quarters of a millimetre: seen from the front and from above. Fed with the passes
// as they are fired, within a time limit a call, so that it never holds the machine.

#include <QImage>
#include <QRect>

class PartRecorder;
struct PassRecord;
struct SparsePlane;

class PartSketch
{
public:
    static constexpr double cell = 250; ///< micrometres

    PartSketch();
    /// Takes in what was fired since the last call. A part that has become lower is another one.
    void follow(const PartRecorder &recorder, double partTop);

    /// Column: X above the bed's first column; row: Z, counted from the lowest.
    const QImage &front() const { return m_front; }
    /// Column: X; row: Y, both from the bed's first dot.
    const QImage &top() const { return m_top; }
    /// Cells that hold something; columns are those of `front` and `top`.
    QRect frontCells() const { return m_frontCells; }
    QRect topCells() const { return m_topCells; }

private:
    void clear();
    void add(const PassRecord &pass);
    void addPlane(const PassRecord &pass, const SparsePlane &plane, QRgb colour);

    QImage m_front;
    QImage m_top;
    QRect m_frontCells;
    QRect m_topCells;
    size_t m_taken = 0;
    double m_partTop = 0;
};
