#include <ZemSpline.h>

#include <algorithm>
#include <cmath>

namespace Zem {

namespace {

using Point = BaVec3d<double>;

bool isFinite(Point const &point)
{
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

/// The square root of the distance. Quarters of the coordinates, so that no difference of finite numbers overflows.
double knotInterval(Point const &from, Point const &to)
{
    Point const quarter = to * 0.25 - from * 0.25;
    return 2.0 * std::sqrt(quarter.length());
}

/// The base points that the curve passes through, with the parameter interval of each segment.
class Curve
{
public:
    explicit Curve(std::vector<Point> const &points)
    {
        for (Point const &point : points) {
            if (isFinite(point))
                append(point);
        }
    }

    bool isEmpty() const { return points_.empty(); }

    /// The point at the share `t` of the whole parameter range.
    Point at(double t) const
    {
        // Also true for NaN.
        if (!(t > 0.0) || points_.size() == 1)
            return points_.front();
        if (t >= 1.0)
            return points_.back();
        double const knot = t * knots_.back();
        auto const next = std::upper_bound(knots_.begin() + 1, knots_.end() - 1, knot);
        auto const segment = static_cast<std::size_t>(next - knots_.begin()) - 1;
        return pointOfSegment(segment, std::clamp((knot - knots_[segment]) / intervals_[segment], 0.0, 1.0));
    }

private:
    /// Points too near for an interval above 0 are left out: every division below is by such an interval.
    void append(Point const &point)
    {
        if (points_.empty()) {
            knots_.push_back(0.0);
        } else {
            double const interval = knotInterval(points_.back(), point);
            if (interval == 0.0)
                return;
            intervals_.push_back(interval);
            knots_.push_back(knots_.back() + interval);
        }
        points_.push_back(point);
    }

    /// The derivative at an inner point of the parabola through it and its neighbours.
    Point tangent(std::size_t index) const
    {
        double const before = intervals_[index - 1];
        double const after = intervals_[index];
        Point const slopeBefore = (points_[index] - points_[index - 1]) / before;
        Point const slopeAfter = (points_[index + 1] - points_[index]) / after;
        return slopeBefore * (after / (before + after)) + slopeAfter * (before / (before + after));
    }

    /// The cubic with the tangents at both ends; at an end of the curve the tangent is the chord, as if the neighbour
    /// went on in the mirror of its segment.
    Point pointOfSegment(std::size_t segment, double u) const
    {
        Point const &from = points_[segment];
        Point const &to = points_[segment + 1];
        Point const chord = to - from;
        double const interval = intervals_[segment];
        Point const leaving = segment == 0 ? chord : tangent(segment) * interval;
        Point const arriving = segment + 2 == points_.size() ? chord : tangent(segment + 1) * interval;
        double const v = 1.0 - u;
        return from * (v * v * (1.0 + 2.0 * u)) + leaving * (v * v * u) + to * (u * u * (1.0 + 2.0 * v)) -
               arriving * (u * u * v);
    }

    std::vector<Point> points_;
    std::vector<double> intervals_; // one less than points
    std::vector<double> knots_;
};

} // namespace

void Spline::interpolatePoints(double from, double to, unsigned int count, std::vector<Point> *out) const
{
    out->clear();
    Curve const curve(points_);
    if (curve.isEmpty())
        return;
    out->reserve(count);
    for (unsigned int i = 0; i < count; ++i) {
        // The last parameter is `to` exactly, whatever the rounding.
        double const share = count > 1 ? static_cast<double>(i) / static_cast<double>(count - 1) : 0.0;
        out->push_back(curve.at(from * (1.0 - share) + to * share));
    }
}

} // namespace Zem
