#include <ZemLine2d.h>
#include <ZemPolygon2d.h>

#include "bounding_box.h"
#include "convex_hull.h"
#include "segment_crossing.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Zem {

namespace {

using Point = BaVec2d<double>;

/// One part with its outline. A closed part has an edge from its last point to its first, so a single point is an edge
/// of no length.
struct Part
{
    std::span<Point const> points;
    bool closed;

    std::size_t edges() const { return closed || points.size() == 1 ? points.size() : points.size() - 1; }
    LineSegment2d edge(std::size_t i) const { return {points[i], points[i + 1 < points.size() ? i + 1 : 0]}; }
};

bool isOnOutline(Part const &part, Point const &point)
{
    for (std::size_t i = 0; i < part.edges(); ++i) {
        if (isOnSegment(point, part.edge(i))) {
            return true;
        }
    }
    return false;
}

/// Whether a ray from the point in the direction of x passes the edge. The lower end belongs to the edge, the upper one
/// does not, so that a corner counts once.
bool rayPasses(LineSegment2d const &edge, Point const &point)
{
    bool const upwards = edge.first.y <= point.y && point.y < edge.second.y;
    bool const downwards = edge.second.y <= point.y && point.y < edge.first.y;
    double const side = cross(edge.first, edge.second, point);
    return (upwards && side > 0) || (downwards && side < 0);
}

bool isFilledAt(Part const &part, Point const &point)
{
    bool inside = false;
    for (std::size_t i = 0; part.closed && i < part.edges(); ++i) {
        inside ^= rayPasses(part.edge(i), point);
    }
    return inside;
}

bool contains(Part const &part, Point const &point)
{
    return BoundingBox(part.points).contains(point) && (isFilledAt(part, point) || isOnOutline(part, point));
}

bool outlinesMeet(Part const &a, Part const &b, BoundingBox const &boxOfB)
{
    for (std::size_t i = 0; i < a.edges(); ++i) {
        LineSegment2d const edge = a.edge(i);
        BoundingBox boxOfEdge;
        boxOfEdge.add(edge.first);
        boxOfEdge.add(edge.second);
        for (std::size_t k = 0; boxOfEdge.meets(boxOfB) && k < b.edges(); ++k) {
            if (segmentCrossing(edge, b.edge(k))) {
                return true;
            }
        }
    }
    return false;
}

/// Whether a part lies inside another whose outline it does not meet: one point tells.
bool liesInside(Part const &part, Part const &other)
{
    auto const point = std::find_if(part.points.begin(), part.points.end(), isFinite);
    return point != part.points.end() && contains(other, *point);
}

bool partsOverlap(Part const &a, Part const &b, BoundingBox const &boxOfA)
{
    BoundingBox const boxOfB(b.points);
    return boxOfA.meets(boxOfB) && (outlinesMeet(a, b, boxOfB) || liesInside(a, b) || liesInside(b, a));
}

} // namespace

Polygon2d::Polygon2d(bool closed) noexcept : closed_(closed)
{
}

Polygon2d::Polygon2d(std::vector<Point> points, bool closed) : points_(std::move(points)), closed_(closed)
{
}

void Polygon2d::clear() noexcept
{
    points_.clear();
    laterParts_.clear();
}

void Polygon2d::addPolygon(Polygon2d const &other)
{
    if (other.empty()) {
        return;
    }
    // By number, since `other` may be this very polygon.
    std::size_t const begin = points_.size();
    std::size_t const added = other.points_.size();
    std::size_t const addedLaterParts = other.laterParts_.size();
    if (begin > 0) {
        laterParts_.push_back(begin);
    }
    for (std::size_t i = 0; i < addedLaterParts; ++i) {
        laterParts_.push_back(begin + other.laterParts_[i]);
    }
    for (std::size_t i = 0; i < added; ++i) {
        points_.push_back(other.points_[i]);
    }
}

std::span<Point const> Polygon2d::getPart(std::size_t part) const noexcept
{
    std::size_t const begin = part == 0 ? 0 : laterParts_[part - 1];
    std::size_t const end = part < laterParts_.size() ? laterParts_[part] : points_.size();
    return std::span(points_).subspan(begin, end - begin);
}

void Polygon2d::rotate(Point const &base, double angle) noexcept
{
    if (angle == 0) {
        return; // keeps each bit
    }
    double const c = std::cos(angle);
    double const s = std::sin(angle);
    for (Point &point : points_) {
        Point const d = point - base;
        point = {base.x + d.x * c + d.y * s, base.y + d.y * c - d.x * s};
    }
}

bool Polygon2d::isInPolygon(Point const &point) const noexcept
{
    for (std::size_t i = 0; i < getNumberOfParts(); ++i) {
        if (contains({getPart(i), closed_}, point)) {
            return true;
        }
    }
    return false;
}

bool Polygon2d::overlap(Polygon2d const &other) const noexcept
{
    BoundingBox const boxOfOther(other.points_);
    for (std::size_t i = 0; i < getNumberOfParts(); ++i) {
        Part const part{getPart(i), closed_};
        BoundingBox const box(part.points);
        for (std::size_t k = 0; box.meets(boxOfOther) && k < other.getNumberOfParts(); ++k) {
            if (partsOverlap(part, {other.getPart(k), other.closed_}, box)) {
                return true;
            }
        }
    }
    return false;
}

bool Polygon2d::intersect(LineSegment2d const &segment, Point *crossing) const noexcept
{
    NearestCrossing nearest(segment);
    for (std::size_t i = 0; i < getNumberOfParts(); ++i) {
        Part const part{getPart(i), closed_};
        for (std::size_t k = 0; k < part.edges(); ++k) {
            nearest.meet(part.edge(k));
        }
    }
    return nearest.report(crossing);
}

Polygon2d Polygon2d::getConvexHull() const
{
    std::vector<Point> const corners = distinctPoints(points_);
    return corners.size() < 3 ? *this : Polygon2d(convexHull(corners), true);
}

} // namespace Zem
