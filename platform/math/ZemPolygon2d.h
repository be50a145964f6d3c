// ZemPolygon2d.h: an area of one or several polygons.
#pragma once

#include <ZemVec.h>

#include <cstddef>
#include <span>
#include <vector>

namespace Zem {

class LineSegment2d;

/// Points in one flat sequence, cut into parts. The area is the union of the parts, each filled by the even-odd rule
/// with its border; a part of one point is that point, one of two points a segment. A point that is not finite
/// belongs to no area. A plain value; several threads may read it.
class Polygon2d
{
public:
    /// With `closed` false each part is an open polyline that covers no area but its own line.
    explicit Polygon2d(bool closed = true) noexcept;
    /// One part. Points that are moved in are taken over without a copy.
    Polygon2d(std::vector<BaVec2d<double>> points, bool closed);

    std::size_t size() const noexcept { return points_.size(); }
    std::size_t getNumberOfPoints() const noexcept { return points_.size(); }
    bool empty() const noexcept { return points_.empty(); }
    /// Unchecked: `index` must be below size().
    BaVec2d<double> const &operator[](std::size_t index) const noexcept { return points_[index]; }
    BaVec2d<double> &operator[](std::size_t index) noexcept { return points_[index]; }
    /// The points of all parts.
    std::vector<BaVec2d<double>> const &getPoints() const noexcept { return points_; }

    /// Same points in the same parts.
    bool operator==(Polygon2d const &) const = default;

    /// Both append to the last part.
    void addPoint(BaVec2d<double> const &point) { points_.push_back(point); }
    void push_back(BaVec2d<double> const &point) { points_.push_back(point); }
    void clear() noexcept;
    /// Appends the parts of the other polygon as further parts. An empty one adds nothing.
    void addPolygon(Polygon2d const &other);

    std::size_t getNumberOfParts() const noexcept { return points_.empty() ? 0 : laterParts_.size() + 1; }
    /// The points of one part; `part` must be below getNumberOfParts(). Valid until points are added or removed.
    std::span<BaVec2d<double> const> getPart(std::size_t part) const noexcept;

    /// Turns all parts about `base` by `angle` in radians: a point at distance d goes to
    /// (base.x + d.x cos + d.y sin, base.y + d.y cos - d.x sin), counter-clockwise on a page, where y points down.
    void rotate(BaVec2d<double> const &base, double angle) noexcept;

    /// Whether the point lies in the area; the border counts. Linear in the points.
    bool isInPolygon(BaVec2d<double> const &point) const noexcept;
    /// Whether the areas have a point in common; touching counts. Linear where bounding boxes tell.
    bool overlap(Polygon2d const &other) const noexcept;
    /// Whether the segment meets the outline of a part. `crossing` receives the place nearest to the segment's first
    /// point and is left alone when there is none; it may be null.
    bool intersect(LineSegment2d const &segment, BaVec2d<double> *crossing) const noexcept;
    /// The smallest convex polygon around all parts: one part, without collinear or repeated points, counter-clockwise
    /// with y upwards, beginning with the smallest x (then y). Two points when all lie on one line. With fewer than
    /// three different finite points, a copy of this polygon.
    Polygon2d getConvexHull() const;

private:
    std::vector<BaVec2d<double>> points_;
    std::vector<std::size_t> laterParts_; // where the second and each later part begins; most polygons have none
    bool closed_;
};

} // namespace Zem
