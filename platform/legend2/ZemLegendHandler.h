// ZemLegendHandler.h: turns values into the colours of a scale.
#pragma once

#include <ZemColor.h>
#include <ZemLegend.h>
#include <ZemLegendData.h>
#include <ZemToleranceParams.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace Zem::Legend2 {

/// Where values lie between the limits of a scale: position 0 at the minimum, 1 at the maximum. A plain value;
/// several threads may read it.
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

/// Gives values their colours. Made for a walk over many values: what depends on the scale alone is computed at
/// construction, getColor() is a lookup. Values are in the base unit of the quantity.
///
/// A scale has colours when its limits are finite, the minimum is not above the maximum, and on a logarithmic scale
/// both are above 0. When both are equal, that one value has the colour of the middle.
///
/// In tolerance mode the limits of the scale are those of the tolerance: a value has the colour of its pass type.
///
/// Once set up, one object may be read from several threads.
class LegendHandler
{
public:
    static constexpr unsigned int NUMBER_OF_COLORS = 256;

    /// Reads both now and keeps neither. Without either, no value has a colour.
    LegendHandler(Legend const *legend, Data const *data);

    /// Uses the colours of setToleranceParams(), or else those of ColorMap as they are now.
    void setToleranceMode(bool on);
    /// Reads the parameters now. Does not change the mode. Null stands for those of ColorMap.
    void setToleranceParams(ToleranceParams const *params);

    /// `fallback` for a value that is not valid.
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
    static constexpr unsigned int TABLE_SIZE = 1024;

    struct Choice
    {
        Color color;
        bool valid = false;
    };

    void readScale(Legend const &legend, Data const &data);
    void readTolerance(ToleranceParams const &params);
    Color colorAt(double position) const noexcept;
    Choice choiceOf(double value) const noexcept;
    Choice toleranceChoiceOf(double value) const noexcept;

    ScaleRange range_;
    bool logarithmic_ = false;
    unsigned int classes_ = 0;     // 0 for a continuous scale
    Color const *table_ = nullptr; // TABLE_SIZE colours of the map, shared by all handlers and never freed
    Choice below_;
    Choice above_;

    bool toleranceMode_ = false;
    bool ownTolerance_ = false;
    ToleranceParams tolerance_;
    std::array<Choice, ToleranceParams::NUMBER_OF_PASS_TYPES> verdicts_;
};

// Inline for the walks over many values.

inline double ScaleRange::positionOf(double value) const noexcept
{
    if (!(extent_ > 0.0)) {
        return 0.5;
    }
    double const place = logarithmic_ ? std::log10(value) : value * shrink_;
    return std::clamp((place - start_) / extent_, 0.0, 1.0);
}

inline Color LegendHandler::colorAt(double position) const noexcept
{
    if (classes_ == 0) {
        return table_[static_cast<unsigned int>(position * (TABLE_SIZE - 1) + 0.5)];
    }
    if (classes_ == 1) {
        return table_[TABLE_SIZE / 2];
    }
    // The first and the last class have the colours of the ends.
    unsigned int const index = std::min(static_cast<unsigned int>(position * classes_), classes_ - 1);
    return table_[index * (TABLE_SIZE - 1) / (classes_ - 1)];
}

inline LegendHandler::Choice LegendHandler::choiceOf(double value) const noexcept
{
    if (!range_.isValid() || std::isnan(value) || (logarithmic_ && value <= 0.0)) {
        return {};
    }
    if (toleranceMode_) {
        return toleranceChoiceOf(value);
    }
    if (value < range_.getMinimum()) {
        return below_;
    }
    if (value > range_.getMaximum()) {
        return above_;
    }
    return {colorAt(range_.positionOf(value)), true};
}

inline Color LegendHandler::getColor(double value, Color fallback) const noexcept
{
    Choice const choice = choiceOf(value);
    return choice.valid ? choice.color : fallback;
}

inline bool LegendHandler::isValid(double value) const noexcept
{
    return choiceOf(value).valid;
}

} // namespace Zem::Legend2
