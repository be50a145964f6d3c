// ZemInternalOrientation.h: Cal::InternalOrientation, what a calibration finds out about the inside of a camera.
#pragma once

#include <ZemVec.h>

#include <array>

namespace Zem::IO {
class InStream;
class OutStream;
} // namespace Zem::IO

namespace Cal {

/// Image distance, principal point and lens distortion. ZemCamera.h tells how they project. A plain value; several
/// threads may read it.
class InternalOrientation
{
public:
    /// Image distance in pixels along the rows (x) and the columns (y); (0, 0), which projects nothing, at first.
    Zem::BaVec2d<double> const &getImageDistance() const noexcept { return imageDistance_; }
    void setImageDistance(Zem::BaVec2d<double> const &distance) noexcept { imageDistance_ = distance; }

    /// Pixels from the corner of the frame, whose first pixel reaches from (0, 0) to (1, 1). Calibrations that count
    /// from the centre of the first pixel have half a pixel less.
    Zem::BaVec2d<double> const &getPrincipalPoint() const noexcept { return principalPoint_; }
    void setPrincipalPoint(Zem::BaVec2d<double> const &point) noexcept { principalPoint_ = point; }

    /// The coefficients k1, k2, k3 of the second, fourth and sixth power of the radius.
    std::array<double, 3> const &getRadialDistortion() const noexcept { return radial_; }
    void setRadialDistortion(double k1, double k2, double k3) noexcept { radial_ = {k1, k2, k3}; }

    /// The coefficients p1, p2 of a lens that is not centred.
    std::array<double, 2> const &getTangentialDistortion() const noexcept { return tangential_; }
    void setTangentialDistortion(double p1, double p2) noexcept { tangential_ = {p1, p2}; }

    bool operator==(InternalOrientation const &) const = default;

    /// One stream block. load throws Zem::IO::StreamException and then changes nothing.
    void save(Zem::IO::OutStream *stream) const;
    void load(Zem::IO::InStream *stream);

private:
    template <class Self, class Field>
    static void forEachField(Self &self, Field const &field);

    Zem::BaVec2d<double> imageDistance_;
    Zem::BaVec2d<double> principalPoint_;
    std::array<double, 3> radial_{};
    std::array<double, 2> tangential_{};
};

} // namespace Cal
