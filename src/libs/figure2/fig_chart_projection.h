// fig_chart_projection.h: from the values of a chart to the page, for a walk over many points.
// Layer: element. Internal to the library.
#pragma once

#include <ZemUnit.h>
#include <ZemVec.h>

#include <cmath>

namespace Zem::Fig2 {

/// One direction of it. Unit and limits are looked up once, not for each point.
class AxisProjection
{
public:
    /// `visible` is the unit that the axis shows; the limits are in that unit.
    AxisProjection(UnitData const &visible, double minimum, double maximum)
        : minimum_(minimum), maximum_(maximum), shown_(visible.getCurrentUnit())
    {
        if (visible.hasUnit() && shown_ != visible.getUnit()->getBaseUnit())
            unit_ = visible.getUnit();
    }

    /// In the unit of the axis and between the limits; NaN stays NaN.
    double visible(double value) const
    {
        double const converted = unit_ ? unit_->fromBase(value, shown_) : value;
        return converted < minimum_ ? minimum_ : converted > maximum_ ? maximum_ : converted;
    }

private:
    double minimum_;
    double maximum_;
    Unit::Units_t shown_;
    Unit const *unit_ = nullptr; ///< null when the base unit is shown
};

struct ChartProjection
{
    AxisProjection x;
    AxisProjection y;
    BaVec2d<double> plotOffset;
    BaVec2d<double> plotSize;
    BaVec2d<double> dataOrigin;
    BaVec2d<double> dataScale;

    BaVec2d<double> operator()(BaVec2d<double> const &point) const
    {
        return {plotOffset.x + dataScale.x * (x.visible(point.x) - dataOrigin.x),
                plotOffset.y - (y.visible(point.y) - dataOrigin.y) * dataScale.y + plotSize.y};
    }
};

/// False for the place of a point that is nowhere, as NaN is.
inline bool isOnPage(BaVec2d<double> const &place)
{
    return std::isfinite(place.x) && std::isfinite(place.y);
}

} // namespace Zem::Fig2
