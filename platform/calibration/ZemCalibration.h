// ZemCalibration.h: Cal::Calibration, the result of calibrating one camera.
#pragma once

#include <ZemInternalOrientation.h>

namespace Cal {

/// What cameras made from it begin with. ZemCamera.h tells what the numbers mean. A plain value; several threads may
/// read it.
class Calibration
{
public:
    Calibration() = default;
    Calibration(InternalOrientation const &orientation, unsigned int imageWidth, unsigned int imageHeight);

    InternalOrientation const &getOrientation() const noexcept { return orientation_; }
    /// Pixels.
    unsigned int getImageWidth() const noexcept { return imageWidth_; }
    unsigned int getImageHeight() const noexcept { return imageHeight_; }

private:
    InternalOrientation orientation_;
    unsigned int imageWidth_ = 0;
    unsigned int imageHeight_ = 0;
};

} // namespace Cal
