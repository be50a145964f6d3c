// ZemSpline.h: a smooth curve through points.
#pragma once

#include <ZemVec.h>

#include <vector>

namespace Zem {

/// A centripetal Catmull-Rom curve through all base points in the order in which they were added: without loops or
/// cusps between two points, and bent by the nearest four points only. Distinct objects may be used from distinct
/// threads, and const operations of one object from several.
///
/// E. Catmull, R. Rom: A class of local interpolating splines. Computer Aided Geometric Design, 1974.
/// C. Yuksel, S. Schaefer, J. Keyser: Parameterization and applications of Catmull-Rom curves. CAD 43 (2011) 747-755.
class Spline
{
public:
    Spline() = default;
    ~Spline() = default;

    void appendPoint(BaVec3d<double> const &point) { points_.push_back(point); }
    /// How many were added, those included that the curve cannot pass through.
    unsigned int getNumberOfPoints() const { return static_cast<unsigned int>(points_.size()); }

    /// Fills `out` (never null) with `count` points of the curve, the curve parameter running evenly from `from` to
    /// `to`; a single point is that at `from`. 0 is the first base point, 1 the last one, the share of a segment goes
    /// with the square root of its length. Parameters outside are taken as the nearer end, NaN as the first. Points
    /// with a coordinate that is not finite are passed over, and so is a point in the place of its predecessor. Two
    /// points make a straight line, one point is repeated, none leaves `out` empty.
    void interpolatePoints(double from, double to, unsigned int count, std::vector<BaVec3d<double>> *out) const;

private:
    std::vector<BaVec3d<double>> points_;
};

} // namespace Zem
