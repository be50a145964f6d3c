// ZemRect.h: a rectangle parallel to the axes.
#pragma once

#include <ZemVec.h>

namespace Zem {

class LineSegment2d;
class Polygon2d;

/// A corner and the way from it to the opposite one; a negative width or height spans to the other side. A plain value;
/// several threads may read it.
class Rect
{
public:
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;

    constexpr Rect() noexcept = default;
    constexpr Rect(double x_, double y_, double width_, double height_) noexcept
        : x(x_), y(y_), width(width_), height(height_)
    {
    }
    constexpr Rect(BaVec2d<double> const &corner, BaVec2d<double> const &size) noexcept
        : Rect(corner.x, corner.y, size.x, size.y)
    {
    }
    /// The bounding box of the finite points, of all parts; Rect() when there are none.
    explicit Rect(Polygon2d const &polygon) noexcept;

    constexpr bool operator==(Rect const &) const noexcept = default;

    /// The corners in order around the rectangle, beginning with (x, y), along the width first.
    constexpr BaVec2d<double> p0() const noexcept { return {x, y}; }
    constexpr BaVec2d<double> p1() const noexcept { return {x + width, y}; }
    constexpr BaVec2d<double> p2() const noexcept { return {x + width, y + height}; }
    constexpr BaVec2d<double> p3() const noexcept { return {x, y + height}; }

    /// The border belongs to the rectangle: rectangles that touch intersect.
    bool intersects(Rect const &other) const noexcept;
    bool intersects(BaVec2d<double> const &point) const noexcept;
    /// Whether the segment meets the border. `crossing` receives the place nearest to the segment's first point and is
    /// left alone when there is none; it may be null.
    bool intersect(LineSegment2d const &segment, BaVec2d<double> *crossing) const noexcept;
};

} // namespace Zem
