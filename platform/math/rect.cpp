#include <ZemPolygon2d.h>
#include <ZemRect.h>

#include "bounding_box.h"
#include "segment_crossing.h"

namespace Zem {

namespace {

/// Empty when a number is not finite.
BoundingBox boxOf(Rect const &rect)
{
    BoundingBox box;
    if (isFinite(rect.p0()) && isFinite(rect.p2())) {
        box.add(rect.p0());
        box.add(rect.p2());
    }
    return box;
}

} // namespace

Rect::Rect(Polygon2d const &polygon) noexcept
{
    BoundingBox const box(polygon.getPoints());
    if (!box.empty()) {
        *this = Rect(box.low, box.high - box.low);
    }
}

bool Rect::intersects(Rect const &other) const noexcept
{
    return boxOf(*this).meets(boxOf(other));
}

bool Rect::intersects(BaVec2d<double> const &point) const noexcept
{
    return boxOf(*this).contains(point);
}

bool Rect::intersect(LineSegment2d const &segment, BaVec2d<double> *crossing) const noexcept
{
    NearestCrossing nearest(segment);
    nearest.meet({p0(), p1()});
    nearest.meet({p1(), p2()});
    nearest.meet({p2(), p3()});
    nearest.meet({p3(), p0()});
    return nearest.report(crossing);
}

} // namespace Zem
