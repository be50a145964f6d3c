// figqt_short_lines.h: a few short lines of one look.
#pragma once

#include "figqt_canvas.h"
#include "figqt_small_shape.h"

#include <array>

namespace Zem::Fig2Qt {

/// What may turn out to be a small shape, an arrow or a cross, or the first of many lines.
class ShortLines
{
public:
    bool isEmpty() const { return count_ == 0; }
    Stroke const &getStroke() const { return stroke_; }
    /// In pixels; two for each line.
    std::span<QPointF const> getEnds() const { return std::span(ends_).first(2 * count_); }
    std::vector<Edge> const &getEdges() const { return edges_; }
    void clear();

    /// False when it has no place: it is not short, not straight and full, of another look, or one too many. `pixels`
    /// are for a millimetre.
    bool add(Polyline const &line, Stroke const &stroke, double pixels);

private:
    static constexpr std::size_t MOST = 8;

    void addOutline(QPointF const &from, QPointF const &to);
    void setHalf(double half, bool round);

    Stroke stroke_;
    std::size_t count_ = 0;
    std::array<QPointF, 2 * MOST> ends_;
    QRectF box_; // of the ends, in pixels
    std::vector<Edge> edges_;
    double half_ = -1.0;       // of the width, in pixels
    std::vector<QPointF> arc_; // about a round end, for a line to the right
    std::vector<QPointF> corners_;
};

} // namespace Zem::Fig2Qt
