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

double ScaleRange::positionOf(double value) const noexcept
{
    if (!(extent_ > 0.0)) {
        return 0.5;
    }
    double const place = logarithmic_ ? std::log10(value) : value * shrink_;
    return std::clamp((place - start_) / extent_, 0.0, 1.0);
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

LegendHandler::LegendHandler(Legend const *legend, Data const *data) : legend_(legend), data_(data)
{
    readScale();
}

void LegendHandler::readScale()
{
    if (!legend_ || !data_) {
        return;
    }
    logarithmic_ = legend_->getColorMode() == COLOR_MODE_LOGARITHMIC;
    range_ = ScaleRange(legend_->getMinimum(*data_), legend_->getMaximum(*data_), legend_->getColorMode());
    classes_ = legend_->isDiscrete() ? legend_->getNumberOfClasses() : 0;
    table_ = colorTable(legend_->getColorMapName());
    if (legend_->getUseExtremaColors()) {
        below_ = {legend_->getMinColor(), legend_->isMinColorValid()};
        above_ = {legend_->getMaxColor(), legend_->isMaxColorValid()};
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

Color LegendHandler::colorAt(double position) const noexcept
{
    if (classes_ == 0) {
        return table_[static_cast<unsigned int>(position * (COLOR_TABLE_SIZE - 1) + 0.5)];
    }
    if (classes_ == 1) {
        return table_[COLOR_TABLE_SIZE / 2];
    }
    // The first and the last class have the colours of the ends.
    unsigned int const index = std::min(static_cast<unsigned int>(position * classes_), classes_ - 1);
    return table_[index * (COLOR_TABLE_SIZE - 1) / (classes_ - 1)];
}

LegendHandler::Choice LegendHandler::toleranceChoiceOf(double value) const noexcept
{
    return verdicts_[tolerance_.getPassType(value, range_.getMinimum(), range_.getMaximum())];
}

LegendHandler::Choice LegendHandler::choiceOf(double value) const noexcept
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

Color LegendHandler::getColor(double value, Color fallback) const noexcept
{
    Choice const choice = choiceOf(value);
    return choice.valid ? choice.color : fallback;
}

bool LegendHandler::isValid(double value) const noexcept
{
    return choiceOf(value).valid;
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
