#include <ZemCalibration.h>

namespace Cal {

Calibration::Calibration(InternalOrientation const &orientation, unsigned int imageWidth, unsigned int imageHeight)
    : orientation_(orientation), imageWidth_(imageWidth), imageHeight_(imageHeight)
{
}

} // namespace Cal
