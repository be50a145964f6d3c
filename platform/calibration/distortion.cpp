#include "distortion.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Cal::Distortion {

namespace {

constexpr double INFINITE = std::numeric_limits<double>::infinity();

double radialFactor(std::array<double, 3> const &k, double squaredRadius)
{
    return 1.0 + squaredRadius * (k[0] + squaredRadius * (k[1] + squaredRadius * k[2]));
}

/// The derivative of r * radialFactor(r * r) by r, in terms of s = r * r.
double radialSlope(std::array<double, 3> const &k, double s)
{
    return 1.0 + s * (3.0 * k[0] + s * (5.0 * k[1] + s * 7.0 * k[2]));
}

/// Where the slope itself turns, as far as that lies above 0, in order; what is not there is infinite.
std::array<double, 2> turningPoints(std::array<double, 3> const &k)
{
    double const a = 3.0 * k[0];
    double const b = 5.0 * k[1];
    double const c = 7.0 * k[2];
    // The form of the quadratic formula that does not cancel, and that c = 0 leaves with one root.
    double const q = -(b + std::copysign(std::sqrt(b * b - 3.0 * a * c), b));
    std::array<double, 2> turns{q / (3.0 * c), a / q};
    for (double &turn : turns) {
        if (!(turn > 0.0))
            turn = INFINITE;
    }
    std::sort(turns.begin(), turns.end());
    return turns;
}

/// Where the slope ceases to be positive, to the last bit: it is positive at 0, not at `end`, and changes once between.
double rootBefore(std::array<double, 3> const &k, double end)
{
    double positive = 0.0;
    for (;;) {
        double const middle = positive + (end - positive) * 0.5;
        if (!(positive < middle && middle < end))
            return positive;
        (radialSlope(k, middle) > 0.0 ? positive : end) = middle;
    }
}

} // namespace

double squaredMonotonicRadius(std::array<double, 3> const &radial)
{
    if (!std::all_of(radial.begin(), radial.end(), [](double k) { return std::isfinite(k); }))
        return 0.0;
    for (double turn : turningPoints(radial)) {
        if (turn < INFINITE && !(radialSlope(radial, turn) > 0.0))
            return rootBefore(radial, turn);
    }
    // Positive where it turns, the slope is positive for ever or ends once, behind the last turn.
    double end = 1.0;
    while (radialSlope(radial, end) > 0.0 && end < INFINITE)
        end *= 2.0;
    return end < INFINITE ? rootBefore(radial, end) : INFINITE;
}

Zem::BaVec2d<double> distort(InternalOrientation const &lens, Zem::BaVec2d<double> const &u)
{
    double const squaredRadius = u.dot(u);
    double const factor = radialFactor(lens.getRadialDistortion(), squaredRadius);
    auto const [p1, p2] = lens.getTangentialDistortion();
    return {u.x * factor + 2.0 * p1 * u.x * u.y + p2 * (squaredRadius + 2.0 * u.x * u.x),
            u.y * factor + p1 * (squaredRadius + 2.0 * u.y * u.y) + 2.0 * p2 * u.x * u.y};
}

Zem::BaVec2d<double> distortBeyond(InternalOrientation const &lens, Zem::BaVec2d<double> const &u, double squaredLimit)
{
    double const squaredRadius = u.dot(u);
    if (squaredRadius <= squaredLimit)
        return distort(lens, u);
    double const share = std::sqrt(squaredLimit / squaredRadius);
    return distort(lens, u * share) / share;
}

bool isMonotonicAt(InternalOrientation const &lens, Zem::BaVec2d<double> const &u)
{
    auto const &k = lens.getRadialDistortion();
    auto const [p1, p2] = lens.getTangentialDistortion();
    double const s = u.dot(u);
    double const factor = radialFactor(k, s);
    double const twiceSlopeOfFactor = 2.0 * (k[0] + s * (2.0 * k[1] + s * 3.0 * k[2]));
    // The derivatives make a symmetric matrix; the distortion increases where it is positive definite.
    double const xx = factor + twiceSlopeOfFactor * u.x * u.x + 2.0 * p1 * u.y + 6.0 * p2 * u.x;
    double const yy = factor + twiceSlopeOfFactor * u.y * u.y + 6.0 * p1 * u.y + 2.0 * p2 * u.x;
    double const xy = twiceSlopeOfFactor * u.x * u.y + 2.0 * p1 * u.x + 2.0 * p2 * u.y;
    return xx > 0.0 && xx * yy > xy * xy;
}

} // namespace Cal::Distortion
