#include <ZemCamera.h>

#include <ZemCalibration.h>

#include "distortion.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace Cal {

namespace {

bool isFinite(Zem::BaVec2d<double> const &v)
{
    return std::isfinite(v.x) && std::isfinite(v.y);
}

} // namespace

Camera::Camera(Calibration *calibration) : calibration_(calibration)
{
    if (calibration) {
        orientation_ = calibration->getOrientation();
        imageWidth_ = calibration->getImageWidth();
        imageHeight_ = calibration->getImageHeight();
    }
    updateModel();
}

Camera::Camera(Camera const &other, bool keepCalibration) : Camera(other)
{
    if (!keepCalibration)
        calibration_ = nullptr;
}

void Camera::setOrientation(InternalOrientation const &orientation)
{
    orientation_ = orientation;
    updateModel();
}

void Camera::setR0(double r0)
{
    r0_ = r0;
    updateModel();
}

void Camera::setHPOffset(int x, int y)
{
    offsetX_ = x;
    offsetY_ = y;
    updateModel();
}

void Camera::setImageSize(unsigned int width, unsigned int height)
{
    imageWidth_ = width;
    imageHeight_ = height;
    updateModel();
}

/// What is the same for all points is worked out once, not for each.
void Camera::updateModel()
{
    Zem::BaVec2d<double> const &distance = orientation_.getImageDistance();
    centre_ = orientation_.getPrincipalPoint() + Zem::BaVec2d<double>(offsetX_, offsetY_);
    pixelsPerUnit_ = distance * r0_;
    squaredLimit_ = Distortion::squaredMonotonicRadius(orientation_.getRadialDistortion());
    projects_ = distance.x > 0.0 && distance.y > 0.0 && r0_ > 0.0 && isFinite(pixelsPerUnit_) && imageWidth_ > 0 &&
                imageHeight_ > 0 && squaredLimit_ > 0.0;
}

/// False for what is not in front of the camera, NaN included.
bool Camera::computeRay(Zem::Transformation const &transformation, Zem::BaVec3d<double> const &point,
                        Zem::BaVec2d<double> *ray) const
{
    Zem::BaVec3d<double> const p = transformation.applyTo(point);
    if (!projects_ || !(p.z > 0.0))
        return false;
    *ray = Zem::BaVec2d<double>(p.x / p.z, p.y / p.z) / r0_;
    return isFinite(*ray);
}

Zem::BaVec2d<double> Camera::pixelOf(Zem::BaVec2d<double> const &distorted) const
{
    return {centre_.x + pixelsPerUnit_.x * distorted.x, centre_.y + pixelsPerUnit_.y * distorted.y};
}

/// False for NaN.
bool Camera::isInFrame(Zem::BaVec2d<double> const &pixel) const
{
    return pixel.x >= 0.0 && pixel.x <= imageWidth_ && pixel.y >= 0.0 && pixel.y <= imageHeight_;
}

bool Camera::computeImagePointChecked(Zem::Transformation const &transformation, Zem::BaVec3d<double> const &point,
                                      Zem::BaVec2d<double> &pixel) const
{
    Zem::BaVec2d<double> ray;
    if (!computeRay(transformation, point, &ray) || ray.dot(ray) > squaredLimit_ ||
        !Distortion::isMonotonicAt(orientation_, ray))
        return false;
    Zem::BaVec2d<double> const image = pixelOf(Distortion::distort(orientation_, ray));
    if (!isInFrame(image))
        return false;
    pixel = image;
    return true;
}

bool Camera::computeImagePointUnchecked(Zem::Transformation const &transformation, Zem::BaVec3d<double> const &point,
                                        Zem::BaVec2d<double> &pixel) const
{
    Zem::BaVec2d<double> ray;
    if (!computeRay(transformation, point, &ray))
        return false;
    Zem::BaVec2d<double> const image = pixelOf(Distortion::distortBeyond(orientation_, ray, squaredLimit_));
    if (!isFinite(image))
        return false;
    pixel = image;
    return true;
}

} // namespace Cal
