// ZemCoordinateTransformation.h: FG::CoordinateTransformation, from the sensor's full frame to the picture grabbed.
#pragma once

#include <ZemVec.h>

namespace Zem::IO {
class InStream;
class OutStream;
} // namespace Zem::IO

namespace FG {

/// A camera may be read out in a window and with pixels put together; its calibration holds for the full frame. A
/// point of the full frame goes to (point - offset) * scale. Pixels count from the corner of either frame, (1, 1) being
/// the opposite corner of the first pixel, so that binning needs no shift by half pixels. A plain value; several
/// threads may read it.
class CoordinateTransformation
{
public:
    /// The full frame itself: offset 0, scale 1.
    CoordinateTransformation() = default;
    /// `offset`: the corner of the window in pixels of the full frame. `scale`: pixels of the reduced frame for one of
    /// the full frame, 0.5 where two are put together.
    CoordinateTransformation(Zem::BaVec2d<double> const &offset, Zem::BaVec2d<double> const &scale);

    Zem::BaVec2d<double> const &getOffset() const noexcept { return offset_; }
    Zem::BaVec2d<double> const &getScale() const noexcept { return scale_; }

    /// Pixels of the reduced frame, also outside of it; not finite for numbers that are not.
    Zem::BaVec2d<double> computeReducedFrameCoordinates(Zem::BaVec2d<double> const &point) const;

    bool operator==(CoordinateTransformation const &) const = default;

    /// One stream block. readBlock throws Zem::IO::StreamException and then changes nothing.
    void writeBlock(Zem::IO::OutStream *stream) const;
    void readBlock(Zem::IO::InStream *stream);

private:
    Zem::BaVec2d<double> offset_;
    Zem::BaVec2d<double> scale_{1.0, 1.0};
};

} // namespace FG
