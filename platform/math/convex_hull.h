// convex_hull.h: the convex hull of a set of points, inside this library.
#pragma once

#include <ZemVec.h>

#include <vector>

namespace Zem {

/// The different ones among the finite points, ordered by x, then y.
std::vector<BaVec2d<double>> distinctPoints(std::vector<BaVec2d<double>> const &points);

/// Takes what distinctPoints() gives, at least three; gives the corners counter-clockwise with y upwards, beginning
/// with the smallest x (then y). Two corners when all points lie on one line.
std::vector<BaVec2d<double>> convexHull(std::vector<BaVec2d<double>> const &points);

} // namespace Zem
