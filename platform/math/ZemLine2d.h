// ZemLine2d.h: an infinite line and a line segment in the plane.
#pragma once

#include <ZemVec.h>

namespace Zem {

/// The infinite line through two points, directed from the first to the second. Two equal points make no line; the
/// operations then say what they do. A plain value; several threads may read it.
class Line2d
{
public:
    BaVec2d<double> first;
    BaVec2d<double> second;

    constexpr Line2d() noexcept = default;
    constexpr Line2d(BaVec2d<double> const &first_, BaVec2d<double> const &second_) noexcept
        : first(first_), second(second_)
    {
    }

    constexpr bool operator==(Line2d const &) const noexcept = default;

    /// Positive on the left of the direction, seen with y upwards (so on the right on a page, where y points down).
    /// Equal points: the distance from them.
    double signedDistance(BaVec2d<double> const &point) const noexcept;
    /// The foot of the perpendicular from the point onto the line. Equal points: that point.
    BaVec2d<double> perpend(BaVec2d<double> const &point) const noexcept;
    /// False, and `crossing` is left alone, when the lines are parallel or one of them is none. `crossing` may be null.
    bool intersect(Line2d const &other, BaVec2d<double> *crossing) const noexcept;
};

/// The stretch between two points, both included. Equal points make a segment of one point. A plain value; several
/// threads may read it.
class LineSegment2d
{
public:
    BaVec2d<double> first;
    BaVec2d<double> second;

    constexpr LineSegment2d() noexcept = default;
    constexpr LineSegment2d(BaVec2d<double> const &first_, BaVec2d<double> const &second_) noexcept
        : first(first_), second(second_)
    {
    }

    constexpr bool operator==(LineSegment2d const &) const noexcept = default;

    /// Whether the segments have a point in common; touching counts. `crossing` receives it, of several the one
    /// nearest to `first` of this segment, and is left alone when there is none; it may be null.
    bool intersect(LineSegment2d const &other, BaVec2d<double> *crossing) const noexcept;
    /// intersect() without the point.
    bool overlap(LineSegment2d const &other) const noexcept { return intersect(other, nullptr); }
};

} // namespace Zem
