#include <ZemTransformation.h>

#include <Eigen/Geometry>

#include <cmath>

namespace Zem {

namespace {

/// Below this the turns about x and z are turns about one axis and cannot be told apart.
constexpr double SMALLEST_COSINE = 1e-12;

Eigen::Matrix3d rotationOf(BaVec3d<double> const &angles)
{
    using Turn = Eigen::AngleAxisd;
    return (Turn(angles.z, Eigen::Vector3d::UnitZ()) * Turn(angles.y, Eigen::Vector3d::UnitY()) *
            Turn(angles.x, Eigen::Vector3d::UnitX()))
        .toRotationMatrix();
}

BaVec3d<double> anglesOf(Eigen::Matrix3d const &rotation)
{
    double const cosineY = std::hypot(rotation(0, 0), rotation(1, 0));
    double const y = std::atan2(-rotation(2, 0), cosineY);
    if (cosineY < SMALLEST_COSINE)
        return {std::atan2(-rotation(1, 2), rotation(1, 1)), y, 0.0};
    return {std::atan2(rotation(2, 1), rotation(2, 2)), y, std::atan2(rotation(1, 0), rotation(0, 0))};
}

} // namespace

Transformation::Transformation(BaVec3d<double> const &translation, BaVec3d<double> const &angles, double scale)
    : translation_(translation), angles_(angles), scale_(scale)
{
    computeMatrix();
}

void Transformation::computeMatrix()
{
    Eigen::Map<Eigen::Matrix<double, 3, 3, Eigen::RowMajor>>(matrix_.data()) = scale_ * rotationOf(angles_);
}

void Transformation::prepend(Transformation const &first)
{
    BaVec3d<double> const none;
    translation_ = applyTo(first.translation_);
    scale_ *= first.scale_;
    // Angles that nothing is added to keep their bits.
    if (angles_ == none)
        angles_ = first.angles_;
    else if (first.angles_ != none)
        angles_ = anglesOf(rotationOf(angles_) * rotationOf(first.angles_));
    computeMatrix();
}

} // namespace Zem
