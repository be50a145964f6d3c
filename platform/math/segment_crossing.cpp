#include "segment_crossing.h"

#include "bounding_box.h"

#include <algorithm>
#include <cmath>

namespace Zem {

namespace {

using Point = BaVec2d<double>;

bool isBetween(double value, double a, double b)
{
    return std::min(a, b) <= value && value <= std::max(a, b);
}

bool spansMeet(double a0, double a1, double b0, double b1)
{
    return std::min(a0, a1) <= std::max(b0, b1) && std::min(b0, b1) <= std::max(a0, a1);
}

bool boxesMeet(LineSegment2d const &a, LineSegment2d const &b)
{
    return spansMeet(a.first.x, a.second.x, b.first.x, b.second.x) &&
           spansMeet(a.first.y, a.second.y, b.first.y, b.second.y);
}

bool isInBox(Point const &point, LineSegment2d const &segment)
{
    return isBetween(point.x, segment.first.x, segment.second.x) &&
           isBetween(point.y, segment.first.y, segment.second.y);
}

bool isFinite(LineSegment2d const &segment)
{
    return isFinite(segment.first) && isFinite(segment.second);
}

bool areOppositeSides(double a, double b)
{
    return (a > 0 && b < 0) || (a < 0 && b > 0);
}

/// Where segments touch without crossing, at least one end lies on the other segment.
std::optional<Point> touchingPoint(LineSegment2d const &a, LineSegment2d const &b)
{
    if (isOnSegment(a.first, b)) {
        return a.first;
    }
    std::optional<Point> nearest;
    auto consider = [&](Point const &point, bool onBoth) {
        if (onBoth && (!nearest || (point - a.first).length() < (*nearest - a.first).length())) {
            nearest = point;
        }
    };
    consider(b.first, isOnSegment(b.first, a));
    consider(b.second, isOnSegment(b.second, a));
    consider(a.second, isOnSegment(a.second, b));
    return nearest;
}

} // namespace

bool isOnSegment(Point const &point, LineSegment2d const &segment) noexcept
{
    return isInBox(point, segment) && cross(segment.first, segment.second, point) == 0;
}

std::optional<Point> segmentCrossing(LineSegment2d const &a, LineSegment2d const &b) noexcept
{
    if (!boxesMeet(a, b) || !isFinite(a) || !isFinite(b)) {
        return std::nullopt;
    }
    // Sides are judged from the same numbers for both edges that share a corner, so nothing slips between them.
    double const firstSide = cross(b.first, b.second, a.first);
    double const secondSide = cross(b.first, b.second, a.second);
    bool const crosses = areOppositeSides(firstSide, secondSide) &&
                         areOppositeSides(cross(a.first, a.second, b.first), cross(a.first, a.second, b.second));
    if (!crosses) {
        return touchingPoint(a, b);
    }
    double const part = firstSide / (firstSide - secondSide);
    if (!std::isfinite(part)) {
        return std::nullopt;
    }
    return a.first + (a.second - a.first) * std::min(part, 1.0);
}

void NearestCrossing::meet(LineSegment2d const &edge) noexcept
{
    std::optional<Point> const crossing = segmentCrossing(segment_, edge);
    if (!crossing) {
        return;
    }
    double const distance = (*crossing - segment_.first).length();
    if (!nearest_ || distance < distance_) {
        nearest_ = crossing;
        distance_ = distance;
    }
}

bool NearestCrossing::report(Point *crossing) const noexcept
{
    if (nearest_ && crossing) {
        *crossing = *nearest_;
    }
    return nearest_.has_value();
}

} // namespace Zem
