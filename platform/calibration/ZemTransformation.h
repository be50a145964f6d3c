// ZemTransformation.h: Zem::Transformation, a rigid motion in space with a scale.
#pragma once

#include <ZemVec.h>

#include <array>

namespace Zem {

/// Takes a point p to scale * R p + translation. R turns about the x axis, then about the fixed y axis, then about the
/// fixed z axis (R = Rz Ry Rx), each counter-clockwise when seen against the axis; angles are radians. Lengths have the
/// unit of the points. A plain value; several threads may read it. Numbers that are not finite are taken as they are
/// and make points that are not finite.
class Transformation
{
public:
    /// Leaves every point where it is.
    Transformation() = default;
    Transformation(BaVec3d<double> const &translation, BaVec3d<double> const &angles, double scale);

    /// As constructed, to the bit. Of a composed motion: angles x and z in -pi to pi, y in -pi/2 to pi/2; where y is at
    /// one of its ends, z is 0.
    BaVec3d<double> const &getTranslation() const noexcept { return translation_; }
    BaVec3d<double> const &getAngles() const noexcept { return angles_; }
    double getScale() const noexcept { return scale_; }

    /// Composes: from now on a point first goes through `first`, then through what this motion was.
    void prepend(Transformation const &first);

    BaVec3d<double> applyTo(BaVec3d<double> const &point) const noexcept
    {
        return {matrix_[0] * point.x + matrix_[1] * point.y + matrix_[2] * point.z + translation_.x,
                matrix_[3] * point.x + matrix_[4] * point.y + matrix_[5] * point.z + translation_.y,
                matrix_[6] * point.x + matrix_[7] * point.y + matrix_[8] * point.z + translation_.z};
    }

private:
    void computeMatrix();

    BaVec3d<double> translation_;
    BaVec3d<double> angles_;
    double scale_ = 1.0;
    std::array<double, 9> matrix_{1, 0, 0, 0, 1, 0, 0, 0, 1}; // scale times R, row by row
};

} // namespace Zem
