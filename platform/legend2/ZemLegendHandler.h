// ZemLegendHandler.h: turns values into the colours of a scale.
#pragma once

#include <ZemColor.h>
#include <ZemLegend.h>
#include <ZemLegendData.h>
#include <ZemToleranceParams.h>

#include <array>
#include <vector>

namespace Zem::Legend2 {

/// Where values lie between the limits of a scale: position 0 at the minimum, 1 at the maximum. A plain value.
class ScaleRange
{
public:
    /// A scale without colours.
    ScaleRange() = default;
    ScaleRange(double minimum, double maximum, ColorMode_t mode) noexcept;

    /// The limits are finite, the minimum is not above the maximum and, on a logarithmic scale, above 0. The other
    /// operations need this.
    bool isValid() const noexcept { return valid_; }
    double getMinimum() const noexcept { return minimum_; }
    double getMaximum() const noexcept { return maximum_; }

    /// From 0 to 1 for a value between the limits, ascending with it; 0.5 when the limits are equal.
    double positionOf(double value) const noexcept;
    /// The inverse, for positions from 0 to 1; exactly a limit for 0 and for 1.
    double valueAt(double position) const noexcept;

private:
    double minimum_ = 0.0;
    double maximum_ = 0.0;
    bool valid_ = false;
    bool logarithmic_ = false;
    double shrink_ = 1.0; // keeps the extent of the widest scales finite
    double start_ = 0.0;
    double extent_ = 0.0;
};

/// Made for a walk over many values: what depends on the scale alone is computed at construction, getColor() is a
/// lookup. Reads the scale, its data and the tolerance parameters at construction and in the two setters, never
/// afterwards, so that reading colours from several threads is safe.
///
/// A scale has colours when its limits are finite, the minimum is not above the maximum, and on a logarithmic scale
/// both are above 0. When both are equal, that one value has the colour of the middle.
///
/// In tolerance mode the limits of the scale are those of the tolerance: a value has the colour of its pass type.
class LegendHandler
{
public:
    static constexpr unsigned int NUMBER_OF_COLORS = 256;

    /// Refers to both without owning them: they live as long as this object. Without either, no value has a colour.
    LegendHandler(Legend const *legend, Data const *data);

    /// Uses the colours of setToleranceParams(), or else those of ColorMap as they are now.
    void setToleranceMode(bool on);
    /// Reads the parameters now. Does not change the mode. Null stands for those of ColorMap.
    void setToleranceParams(ToleranceParams const *params);

    /// Values are in the base unit. `fallback` for a value that is not valid.
    Color getColor(double value, Color fallback) const noexcept;
    /// The value has a colour: it lies between the limits, or beyond one when extrema colours are in use and that one's
    /// colour is valid. In tolerance mode: the colour of its pass type is valid. False for NaN, and on a logarithmic
    /// scale for values of 0 and below.
    bool isValid(double value) const noexcept;

    /// NUMBER_OF_COLORS colours of the strip at even distances, FROM THE MINIMUM TO THE MAXIMUM: a strip painted from
    /// the top needs them reversed. Positions along the strip are linear in the value, as those of its ticks are, also
    /// when the colours are spread logarithmically. None when the scale has no colours. The tolerance mode has no
    /// effect.
    std::vector<Color> getColors() const;

private:
    struct Choice
    {
        Color color;
        bool valid = false;
    };

    void readScale();
    void readTolerance(ToleranceParams const &params);
    Color colorAt(double position) const noexcept;
    Choice choiceOf(double value) const noexcept;
    Choice toleranceChoiceOf(double value) const noexcept;

    Legend const *legend_;
    Data const *data_;

    ScaleRange range_;
    bool logarithmic_ = false;
    unsigned int classes_ = 0;     // 0 for a continuous scale
    Color const *table_ = nullptr; // of the colour map, shared by all handlers and never freed
    Choice below_;
    Choice above_;

    bool toleranceMode_ = false;
    bool ownTolerance_ = false;
    ToleranceParams tolerance_;
    std::array<Choice, ToleranceParams::NUMBER_OF_PASS_TYPES> verdicts_;
};

} // namespace Zem::Legend2
