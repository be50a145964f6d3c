// segment_crossing.h: the one place that decides whether two segments meet, inside this library.
#pragma once

#include <ZemLine2d.h>
#include <ZemVec.h>

#include <optional>

namespace Zem {

/// Twice the signed area of the triangle (a, b, c): positive when c lies left of the way from a to b, y upwards.
constexpr double cross(BaVec2d<double> const &a, BaVec2d<double> const &b, BaVec2d<double> const &c) noexcept
{
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// Whether the point lies on the segment, ends included.
bool isOnSegment(BaVec2d<double> const &point, LineSegment2d const &segment) noexcept;

/// The common point nearest to a.first; nothing when the segments do not meet, or a coordinate is not finite
/// or beyond 1e150.
std::optional<BaVec2d<double>> segmentCrossing(LineSegment2d const &a, LineSegment2d const &b) noexcept;

/// Of several crossings on one segment the one nearest to its first point.
class NearestCrossing
{
public:
    explicit NearestCrossing(LineSegment2d const &segment) noexcept : segment_(segment) {}

    void meet(LineSegment2d const &edge) noexcept;
    /// Whether there is one; it then goes into `crossing`, which may be null.
    bool report(BaVec2d<double> *crossing) const noexcept;

private:
    LineSegment2d segment_;
    std::optional<BaVec2d<double>> nearest_;
    double distance_ = 0.0;
};

} // namespace Zem
