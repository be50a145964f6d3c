// ZemMeasCameraModel.h: how points of space come to lie in the pictures of a camera.
#pragma once

#include <ZemVec.h>

#include <QtCore/QString>

#include <array>
#include <memory>

namespace Zem::Fig2 {
class Transformation;
}

namespace Zem::Measurement {

/// The numbers of a camera and where it stands; ZemCamera.h tells what they mean. A plain value.
struct CameraModel
{
    unsigned int width = 0; ///< pixels
    unsigned int height = 0;
    BaVec2d<double> imageDistance;  ///< pixels, along the rows and along the columns
    BaVec2d<double> principalPoint; ///< pixels from the corner of the picture
    std::array<double, 3> radial{};
    std::array<double, 2> tangential{};
    BaVec3d<double> translation; ///< of points into the camera, in the unit of the points
    BaVec3d<double> angles;      ///< of points into the camera, radians, about x, then y, then z

    /// A view straight onto a plane: the point (x, y, 0) lies `scale` pixels per unit from `origin` (pixels); x runs to
    /// the right and y downwards, or upwards. Depth hardly shows: the camera stands a million units away.
    static CameraModel plane(unsigned int width, unsigned int height, double scale, BaVec2d<double> const &origin,
                             bool upwards);

    /// Never null. Points without an image are those of Fig2::CameraTransformation.
    std::unique_ptr<Fig2::Transformation> makeTransformation() const;

    /// Entries "width", "height", "image_distance", "principal_point", "radial", "tangential", "translation", "angles".
    QString getParameterString() const;
    /// Consumes those entries and leaves alone what has none. Throws ParamError for a bad value; then this is
    /// unchanged.
    void createFromParameterString(QString &parameters);

    bool operator==(CameraModel const &) const = default;
};

} // namespace Zem::Measurement
