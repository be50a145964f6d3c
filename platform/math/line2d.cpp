#include <ZemLine2d.h>

#include "bounding_box.h"
#include "segment_crossing.h"

namespace Zem {

double Line2d::signedDistance(BaVec2d<double> const &point) const noexcept
{
    double const length = (second - first).length();
    return length > 0 ? cross(first, second, point) / length : (point - first).length();
}

BaVec2d<double> Line2d::perpend(BaVec2d<double> const &point) const noexcept
{
    BaVec2d<double> const direction = second - first;
    double const squared = direction.dot(direction);
    return squared > 0 ? first + direction * ((point - first).dot(direction) / squared) : first;
}

bool Line2d::intersect(Line2d const &other, BaVec2d<double> *crossing) const noexcept
{
    BaVec2d<double> const direction = second - first;
    BaVec2d<double> const across = other.second - other.first;
    double const area = direction.x * across.y - direction.y * across.x;
    if (area == 0) {
        return false;
    }
    BaVec2d<double> const point = first + direction * (cross(other.first, other.second, first) / area);
    if (isFinite(point) && crossing) {
        *crossing = point;
    }
    return isFinite(point);
}

bool LineSegment2d::intersect(LineSegment2d const &other, BaVec2d<double> *crossing) const noexcept
{
    NearestCrossing nearest(*this);
    nearest.meet(other);
    return nearest.report(crossing);
}

} // namespace Zem
