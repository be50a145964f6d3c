#include "convex_hull.h"

#include "bounding_box.h"
#include "segment_crossing.h"

#include <algorithm>
#include <iterator>

namespace Zem {

namespace {

using Point = BaVec2d<double>;

bool isBefore(Point const &a, Point const &b)
{
    return a.x < b.x || (a.x == b.x && a.y < b.y);
}

/// Appends a corner behind those from `base` on, after taking away what no longer turns left.
void appendCorner(std::vector<Point> *hull, std::size_t base, Point const &point)
{
    while (hull->size() >= base + 2 && !(cross((*hull)[hull->size() - 2], hull->back(), point) > 0)) {
        hull->pop_back();
    }
    hull->push_back(point);
}

} // namespace

std::vector<Point> distinctPoints(std::vector<Point> const &points)
{
    std::vector<Point> distinct;
    distinct.reserve(points.size());
    std::copy_if(points.begin(), points.end(), std::back_inserter(distinct), isFinite);
    std::sort(distinct.begin(), distinct.end(), isBefore);
    distinct.erase(std::unique(distinct.begin(), distinct.end()), distinct.end());
    return distinct;
}

// Andrew's monotone chain: the lower side from left to right, then the upper side back.
std::vector<Point> convexHull(std::vector<Point> const &points)
{
    std::vector<Point> hull;
    for (Point const &point : points) {
        appendCorner(&hull, 0, point);
    }
    std::size_t const upperBegin = hull.size() - 1;
    for (auto point = points.rbegin() + 1; point != points.rend(); ++point) {
        appendCorner(&hull, upperBegin, *point);
    }
    hull.pop_back(); // the first corner once more
    return hull;
}

} // namespace Zem
