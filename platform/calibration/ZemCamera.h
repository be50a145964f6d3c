// ZemCamera.h: Cal::Camera, which projects points of space into the pixels of a frame.
#pragma once

#include <ZemInternalOrientation.h>
#include <ZemTransformation.h>
#include <ZemVec.h>

namespace Cal {

class Calibration;

/// A pinhole with the lens distortion of Brown and Conrady.
///
/// A transformation takes the point into the camera, at whose projection centre the origin lies: x along the rows, y
/// along the columns downwards, z into the scene. Then, with the ray u = (x / z, y / z) / R0 and r its length,
///
///     ud = u (1 + k1 r^2 + k2 r^4 + k3 r^6) + (2 p1 ux uy + p2 (r^2 + 2 ux^2), p1 (r^2 + 2 uy^2) + 2 p2 ux uy)
///     pixel = principal point + offset + image distance * R0 * ud
///
/// R0 is the radius on which the coefficients are based, as the tangent of the angle to the optical axis. It is 1 for
/// coefficients of the customary kind, the radius of a circle in the picture divided by the image distance for those
/// that tell the distortion as its share on that circle. The offset is added to the principal point where the frame is
/// another window of the sensor than the one that was calibrated. (0, 0) is the corner of the frame, (1, 1) the
/// opposite corner of its first pixel.
///
/// The polynomial describes a lens only as far as it increases; beyond, it folds far points back into the frame. There
/// the distortion of the last good circle is carried on in proportion.
///
/// D. C. Brown: Close-range camera calibration. Photogrammetric Engineering 37 (1971) 855-866.
///
/// Distinct objects may be used from distinct threads, and const operations of one object from several.
class Camera
{
public:
    /// Begins with what the calibration found, which is not owned and must outlive the camera. Null: without
    /// orientation and image size, so that nothing has an image. R0 is 1, the offset 0.
    explicit Camera(Calibration *calibration);
    /// The same model. With `keepCalibration` false the copy stands alone: it knows no calibration.
    Camera(Camera const &other, bool keepCalibration);

    /// Null for a camera that stands alone.
    Calibration *getCalibration() const noexcept { return calibration_; }

    InternalOrientation const &getOrientation() const noexcept { return orientation_; }
    void setOrientation(InternalOrientation const &orientation);
    double getR0() const noexcept { return r0_; }
    void setR0(double r0);
    /// Whole pixels.
    int getHPXOffset() const noexcept { return offsetX_; }
    int getHPYOffset() const noexcept { return offsetY_; }
    void setHPOffset(int x, int y);
    /// Pixels.
    unsigned int getImageWidth() const noexcept { return imageWidth_; }
    unsigned int getImageHeight() const noexcept { return imageHeight_; }
    void setImageSize(unsigned int width, unsigned int height);

    /// Projects a point; `transformation` takes it into the camera. True, and `pixel` receives the image, for a point
    /// in front of the camera, within the range in which the distortion is monotonic, with its image in the frame, the
    /// border included. False, and `pixel` is left alone, for any other, for numbers that are not finite, and always
    /// when the model projects nothing: image distance or R0 not above 0, no image size.
    bool computeImagePointChecked(Zem::Transformation const &transformation, Zem::BaVec3d<double> const &point,
                                  Zem::BaVec2d<double> &pixel) const;
    /// The same without regard to frame and range of the distortion. False for a point that is not in front of the
    /// camera and for numbers and models as above.
    bool computeImagePointUnchecked(Zem::Transformation const &transformation, Zem::BaVec3d<double> const &point,
                                    Zem::BaVec2d<double> &pixel) const;

private:
    void updateModel();
    bool computeRay(Zem::Transformation const &transformation, Zem::BaVec3d<double> const &point,
                    Zem::BaVec2d<double> *ray) const;
    Zem::BaVec2d<double> pixelOf(Zem::BaVec2d<double> const &distorted) const;
    bool isInFrame(Zem::BaVec2d<double> const &pixel) const;

    Calibration *calibration_ = nullptr;
    InternalOrientation orientation_;
    double r0_ = 1.0;
    int offsetX_ = 0;
    int offsetY_ = 0;
    unsigned int imageWidth_ = 0;
    unsigned int imageHeight_ = 0;

    // Follow from the numbers above.
    bool projects_ = false;
    double squaredLimit_ = 0.0; // of r, where the radial distortion ceases to increase
    Zem::BaVec2d<double> centre_;
    Zem::BaVec2d<double> pixelsPerUnit_;
};

} // namespace Cal
