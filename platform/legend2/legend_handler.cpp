#include <ZemLegendHandler.h>

#include "color_tables.h"

#include <ZemColorMap.h>

#include <algorithm>
#include <cmath>

namespace Zem::Legend2 {

ScaleRange::ScaleRange(double minimum, double maximum, ColorMode_t mode) noexcept
    : minimum_(minimum), maximum_(maximum), logarithmic_(mode == COLOR_MODE_LOGARITHMIC)
{
    valid_ = std::isfinite(minimum) && std::isfinite(maximum) && minimum <= maximum && (!logarithmic_ || minimum > 0.0);
    if (!valid_) {
        return;
    }
    if (logarithmic_) {
        start_ = std::log10(minimum);
        extent_ = std::log10(maximum) - start_;
        return;
    }
    shrink_ = std::isfinite(maximum - minimum) ? 1.0 : 0.5;
    start_ = minimum * shrink_;
    extent_ = maximum * shrink_ - start_;
}

double ScaleRange::valueAt(double position) const noexcept
{
    if (position <= 0.0) {
        return minimum_;
    }
    if (position >= 1.0) {
        return maximum_;
    }
    double const value =
        logarithmic_ ? std::pow(10.0, start_ + position * extent_) : std::lerp(minimum_, maximum_, position);
    return std::clamp(value, minimum_, maximum_);
}

LegendHandler::LegendHandler(Legend const *legend, Data const *data)
{
    if (legend && data) {
        readScale(*legend, *data);
    }
}

void LegendHandler::readScale(Legend const &legend, Data const &data)
{
    logarithmic_ = legend.getColorMode() == COLOR_MODE_LOGARITHMIC;
    range_ = ScaleRange(legend.getMinimum(data), legend.getMaximum(data), legend.getColorMode());
    classes_ = legend.isDiscrete() ? legend.getNumberOfClasses() : 0;
    static_assert(TABLE_SIZE == COLOR_TABLE_SIZE);
    table_ = colorTable(legend.getColorMapName());
    if (legend.getUseExtremaColors()) {
        below_ = {legend.getMinColor(), legend.isMinColorValid()};
        above_ = {legend.getMaxColor(), legend.isMaxColorValid()};
    }
}

void LegendHandler::readTolerance(ToleranceParams const &params)
{
    tolerance_ = params;
    for (unsigned int i = 0; i < verdicts_.size(); ++i) {
        auto const type = static_cast<TolerancePassType_t>(i);
        verdicts_[i] = {params.getColor(type), params.isColorValid(type)};
    }
}

void LegendHandler::setToleranceMode(bool on)
{
    toleranceMode_ = on;
    if (on && !ownTolerance_) {
        readTolerance(ColorMap::getToleranceParams());
    }
}

void LegendHandler::setToleranceParams(ToleranceParams const *params)
{
    ownTolerance_ = params != nullptr;
    readTolerance(params ? *params : ColorMap::getToleranceParams());
}

LegendHandler::Choice LegendHandler::toleranceChoiceOf(double value) const noexcept
{
    return verdicts_[tolerance_.getPassType(value, range_.getMinimum(), range_.getMaximum())];
}

std::vector<Color> LegendHandler::getColors() const
{
    std::vector<Color> colors;
    if (!range_.isValid()) {
        return colors;
    }
    colors.reserve(NUMBER_OF_COLORS);
    for (unsigned int i = 0; i < NUMBER_OF_COLORS; ++i) {
        double const value = std::lerp(range_.getMinimum(), range_.getMaximum(), double(i) / (NUMBER_OF_COLORS - 1));
        colors.push_back(colorAt(range_.positionOf(value)));
    }
    return colors;
}

} // namespace Zem::Legend2
