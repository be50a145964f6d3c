// flat_transformation.h: a transformation whose pixels can be worked out by hand.
#pragma once

#include <ZemFig2Transformation.h>

#include <functional>

namespace Zem::Fig2 {

/// A point is seen at its x and y, whatever its z; depths come from a motion that has no part in it.
class FlatTransformation : public Transformation
{
public:
    explicit FlatTransformation(Zem::Transformation const &motion = {}) : Transformation(TYPE_CAMERA), motion_(motion)
    {
    }

    /// Points that this is true for have no image.
    void hide(std::function<bool(BaVec3d<double> const &)> const &isHidden) { isHidden_ = isHidden; }

    FlatTransformation *copy() const override { return new FlatTransformation(*this); }
    Zem::Transformation getTransformation() override { return motion_; }
    bool computeImagePoint(BaVec3d<double> const &point, BaVec2d<double> *image) const override
    {
        *image = {point.x, point.y};
        return !isHidden_(point);
    }
    bool computeImagePoints(BaVec3d<double> const &point1, BaVec3d<double> const &point2, BaVec2d<double> *image1,
                            BaVec2d<double> *image2) const override
    {
        return computeImagePoint(point1, image1) && computeImagePoint(point2, image2);
    }

private:
    Zem::Transformation motion_;
    std::function<bool(BaVec3d<double> const &)> isHidden_ = [](BaVec3d<double> const &) { return false; };
};

} // namespace Zem::Fig2
