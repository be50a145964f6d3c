// figqt_stroker.h: the area of a line of some width.
#pragma once

#include "figqt_coverage.h"

namespace Zem::Fig2Qt {

/// Adds the parts of a line to a coverage: its segments, corners and ends.
class Stroker
{
public:
    /// `width` in pixels; `round` as in Stroke. `target` is not owned.
    Stroker(double width, bool round, Coverage *target);

    /// Points in pixels, one at least. A point where the line does not move is a disc if round, else nothing.
    void add(std::span<QPointF const> points, bool closed);

private:
    void addSegment(QPointF const &from, QPointF const &to, QPointF const &across);
    void addCorner(QPointF const &at, QPointF const &before, QPointF const &after);
    void addMitre(QPointF const &at, QPointF const &before, QPointF const &after);
    void addDisc(QPointF const &centre);

    double half_;
    bool round_;
    Coverage *target_;
    std::vector<QPointF> disc_; // about the origin
    std::vector<QPointF> moved_;
};

} // namespace Zem::Fig2Qt
