// figqt_line_collector.h: the lines of a polygon, as they go to the page.
#pragma once

#include "figqt_canvas.h"

#include <ZemPolygon2d.h>

#include <QtGui/QTransform>

namespace Zem::Fig2Qt {

/// Takes the points of a polygon to the page and leaves out those that no output shows, all in one go. Keeps its memory
/// for the next polygon; it follows what remains.
class LineCollector
{
public:
    struct Grid
    {
        double cell;    ///< see LineReducer
        QRectF visible; ///< all that can be seen
        bool dashed;    ///< the length of the line counts, even where it cannot be seen
    };

    /// False if a coordinate is not finite; then there are no lines.
    bool collect(Polygon2d const &polygon, QTransform const &toPage, Grid const &grid);
    /// Valid until the next collect().
    std::vector<Polyline> getLines(bool closed) const;

private:
    bool addExactly(std::span<BaVec2d<double> const> points, QTransform const &toPage);
    bool addThinned(std::span<BaVec2d<double> const> points, QTransform const &toPage, Grid const &grid);

    struct Part
    {
        std::size_t begin;
        bool thinned;
    };
    std::vector<QPointF> points_;
    std::vector<Part> parts_;
};

} // namespace Zem::Fig2Qt
