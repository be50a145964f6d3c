#include "meas_point_grid.h"

#include <algorithm>

namespace Zem::Measurement {

namespace {

constexpr double TOLERANCE = 1e-6;          // of the extent: coordinates that differ by less are one
constexpr std::size_t PLACES_PER_POINT = 8; // at most: more of them are empty than a grid would have

/// The distinct coordinates, ascending.
std::vector<double> distinct(std::vector<double> coordinates)
{
    std::sort(coordinates.begin(), coordinates.end());
    double const gap = (coordinates.back() - coordinates.front()) * TOLERANCE;
    auto const last = std::unique(coordinates.begin(), coordinates.end(),
                                  [gap](double kept, double next) { return next - kept <= gap; });
    coordinates.erase(last, coordinates.end());
    return coordinates;
}

/// The place of the last one that is not above `value` by more than the tolerance.
std::size_t placeOf(double value, std::vector<double> const &ascending)
{
    double const gap = (ascending.back() - ascending.front()) * TOLERANCE;
    auto const above = std::upper_bound(ascending.begin(), ascending.end(), value + gap);
    return static_cast<std::size_t>(above - ascending.begin()) - 1;
}

} // namespace

std::optional<PointGrid> PointGrid::find(std::vector<BaVec3d<double>> const &points)
{
    if (points.size() < 4) {
        return std::nullopt;
    }
    std::vector<double> xs;
    std::vector<double> ys;
    for (BaVec3d<double> const &point : points) {
        xs.push_back(point.x);
        ys.push_back(point.y);
    }
    xs = distinct(std::move(xs));
    ys = distinct(std::move(ys));
    if (xs.size() < 2 || ys.size() < 2 || xs.size() > points.size() * PLACES_PER_POINT / ys.size()) {
        return std::nullopt;
    }
    PointGrid grid(xs.size(), ys.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        grid.indices_[placeOf(points[i].y, ys) * grid.columns_ + placeOf(points[i].x, xs)] = static_cast<int>(i);
    }
    return grid;
}

} // namespace Zem::Measurement
