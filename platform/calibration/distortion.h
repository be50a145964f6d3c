// distortion.h: the lens distortion of Brown and Conrady, on points in units of R0.
#pragma once

#include <ZemInternalOrientation.h>

namespace Cal::Distortion {

/// The square of the radius up to which the radial part increases; infinity when it always does, 0 when it nowhere
/// does or a coefficient is not finite.
double squaredMonotonicRadius(std::array<double, 3> const &radial);

/// The place at which the lens shows a point.
Zem::BaVec2d<double> distort(InternalOrientation const &lens, Zem::BaVec2d<double> const &u);

/// The same within the circle; outside, the distortion where the ray leaves the circle is carried on in proportion.
Zem::BaVec2d<double> distortBeyond(InternalOrientation const &lens, Zem::BaVec2d<double> const &u, double squaredLimit);

/// Whether the distortion increases in every direction at a point. The radial part can do so where the tangential part
/// has folded the picture already.
bool isMonotonicAt(InternalOrientation const &lens, Zem::BaVec2d<double> const &u);

} // namespace Cal::Distortion
