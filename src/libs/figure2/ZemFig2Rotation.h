// ZemFig2Rotation.h: Rotation, a turn about a point of the page.
// Layer: values. A plain value, copied freely; distinct objects may be used from distinct threads.
#pragma once

#include <ZemStream.h>
#include <ZemVec.h>

namespace Zem::Fig2 {

class Element;

/// A turn by `angle` (radians) about `base` (page millimetres). A point p with d = p - base goes to
/// (base.x + d.x cos a + d.y sin a, base.y + d.y cos a - d.x sin a): counter-clockwise on a page whose y axis runs
/// down.
class Rotation
{
public:
    /// No turn: base (0, 0), angle 0.
    static Rotation const null;

    constexpr Rotation() = default;
    constexpr Rotation(BaVec2d<double> const &base, double angle) : base_(base), angle_(angle) {}
    /// About the element's origin; angle 0 for an element without an angle.
    explicit Rotation(Element const *element);

    BaVec2d<double> const &getBase() const { return base_; }
    void setBase(BaVec2d<double> const &base) { base_ = base; }
    double getAngle() const { return angle_; }
    void setAngle(double angle) { angle_ = angle; }

    /// The point turned; unchanged when the angle is at most 1e-50 in size.
    BaVec2d<double> applyTo(BaVec2d<double> const &point) const;
    /// The point turned back: undoes applyTo up to rounding.
    BaVec2d<double> removeFrom(BaVec2d<double> const &point) const;

    /// One stream block. load throws IO::StreamException and then changes nothing.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

    bool operator==(Rotation const &) const = default;

private:
    template <class Archive, class Self>
    static void blockFields(Archive &archive, Self &self);

    BaVec2d<double> base_{0.0, 0.0};
    double angle_ = 0.0;
};

inline constexpr Rotation Rotation::null{};

} // namespace Zem::Fig2
