#include "ZemFig2RangeCalculator.h"

#include "ZemFig2Calculator.h"

#include <ZemError.h>
#include <ZemLegend.h>

#include <algorithm>
#include <cmath>

namespace Zem::Fig2 {

namespace {

constexpr int DEFAULT_TICKS = 50;
constexpr int DEFAULT_LEGEND_TICKS = 10;
constexpr int TEXT_DECIMALS = 6;
constexpr double TEXT_DUST = 1e-10; // would print as a negative zero

// No label has more decimals, whatever a file asks for.
constexpr int MAX_DECIMALS = 100;

constexpr double MAX_FINITE = std::numeric_limits<double>::max();

/// The test for an interval without extent; the limits are deliberate.
bool nearlyEqual(double a, double b)
{
    return b == 0.0 ? std::abs(a) <= 1e-50 : std::abs(a - b) <= std::abs(b) * 1e-12;
}

double finiteBound(double bound)
{
    return std::clamp(bound, -MAX_FINITE, MAX_FINITE);
}

/// How many labels of this extent stand on the length; 0 for what is no number.
int roomFor(double length, double extent)
{
    double const room = std::floor(length / extent);
    if (!(room > 0.0))
        return 0;
    return room < Legend2::Scaling::MAX_TICKS ? static_cast<int>(room) : Legend2::Scaling::MAX_TICKS;
}

/// The text with six decimals, cut or filled to the number of them.
QString withDecimals(QString text, int digits)
{
    qsizetype const point = text.indexOf(QLatin1Char('.'));
    if (point < 0)
        return text;
    if (digits <= 0)
        return text.left(point);
    return text.leftJustified(point + 1 + std::min(digits, MAX_DECIMALS), QLatin1Char('0'), true);
}

/// Cut, deliberately not rounded: 1.999999 with 2 digits reads 1.99.
QString labelText(double value, int digits)
{
    double const clean = std::abs(value) < TEXT_DUST ? 0.0 : value;
    return withDecimals(QString::number(clean, 'f', TEXT_DECIMALS), digits);
}

void requireNumbers(double minimum, double maximum, char const *function, unsigned int line)
{
    if (std::isnan(minimum) || std::isnan(maximum))
        throw ProgError(function, "fig_range_calc", line, "Range interval can not be computed, boundary is NaN !");
}

} // namespace

RangeCalculator::RangeCalculator(Font const &font) : font_(font)
{
}

void RangeCalculator::computeHorizontal(double minimum, double maximum, double length, int digits, int ticks)
{
    requireNumbers(minimum, maximum, "Zem::Fig2::RangeCalculator::computeHorizontal", __LINE__);
    start(finiteBound(minimum), finiteBound(maximum), digits);
    if (isDegenerate()) {
        takeBoundsAsTicks(length);
        deriveDigits();
        computeTexts(false); // deliberate
        return;
    }
    chooseHorizontalTicks(length, ticks < 1 ? DEFAULT_TICKS : ticks, Legend2::COLOR_MODE_LINEAR);
    computePositions(length);
    computeTexts(true);
}

void RangeCalculator::computeVertical(double minimum, double maximum, double length, int digits, int ticks)
{
    requireNumbers(minimum, maximum, "Zem::Fig2::RangeCalculator::computeVertical", __LINE__);
    start(finiteBound(minimum), finiteBound(maximum), digits);
    if (isDegenerate()) {
        takeBoundsAsTicks(length);
        deriveDigits();
        computeTexts(false);
        return;
    }
    chooseVerticalTicks(length, ticks < 1 ? DEFAULT_TICKS : ticks, Legend2::COLOR_MODE_LINEAR);
    deriveDigits();
    computePositions(length);
    computeTexts(false);
}

void RangeCalculator::computeForLegend(Legend2::Legend const *legend, Legend2::Data const *data, bool horizontal,
                                       double length, int digits)
{
    start(0.0, 0.0, digits);
    if (!legend || !data) {
        takeBoundsAsTicks(length);
        computeTexts(true);
        digits_ = Legend2::Scaling::getNumberOfDigits(tickValues_); // deliberately behind the texts
        return;
    }
    readLimits(*legend, *data);
    if (isDegenerate()) {
        takeBoundsAsTicks(length);
        digits_ = Legend2::Scaling::getNumberOfDigits(tickValues_); // deliberate, whatever was asked for
        computeTexts(true);
        return;
    }
    chooseLegendTicks(*legend, *data, horizontal, length);
    deriveDigits();
    computePositions(length);
    computeTexts(horizontal);
}

double RangeCalculator::getMaxLabelWidth(double minimum, double maximum, int digits) const
{
    // One decimal more than asked for: a safety margin.
    int const decimals = std::clamp(digits, 0, MAX_DECIMALS) + 1;
    auto const width = [this, decimals](double bound) {
        QString const text = QStringLiteral("%1").arg(bound, 0, 'f', decimals, QLatin1Char(' '));
        return Calculator::getInstance()->computeTextSize(font_, text).x;
    };
    return std::max(width(minimum), width(maximum));
}

void RangeCalculator::clear()
{
    *this = RangeCalculator(font_);
}

void RangeCalculator::start(double minimum, double maximum, int digits)
{
    clear();
    minimum_ = minimum;
    maximum_ = maximum;
    digits_ = digits;
}

bool RangeCalculator::isDegenerate() const
{
    return nearlyEqual(minimum_, maximum_);
}

void RangeCalculator::takeBoundsAsTicks(double length)
{
    tickValues_ = {minimum_, maximum_};
    tickPositions_ = {0.0, length};
}

void RangeCalculator::chooseHorizontalTicks(double length, int ticks, Legend2::ColorMode_t colorMode)
{
    // At most twice: the decimals that the first ticks need can make the labels wider, and the ticks fewer.
    for (;;) {
        int const old = getDigits();
        ticks = std::min(ticks, roomFor(length, getMaxLabelWidth(minimum_, maximum_, old)));
        computeTickValues(ticks, colorMode);
        if (digits_ >= 0)
            return;
        deriveDigits();
        if (digits_ == old)
            return;
    }
}

void RangeCalculator::chooseVerticalTicks(double length, int ticks, Legend2::ColorMode_t colorMode)
{
    double const height = Calculator::getInstance()->computeTextSize(font_, QStringLiteral("0")).y;
    computeTickValues(std::min(ticks, roomFor(length, height)), colorMode);
}

void RangeCalculator::computeTickValues(int ticks, Legend2::ColorMode_t colorMode)
{
    Legend2::Scaling::computeDistribution(minimum_, maximum_, ticks + 1, false, colorMode, &tickValues_);
}

void RangeCalculator::deriveDigits()
{
    if (digits_ < 0)
        digits_ = Legend2::Scaling::getNumberOfDigits(tickValues_);
}

void RangeCalculator::readLimits(Legend2::Legend const &legend, Legend2::Data const &data)
{
    minimum_ = legend.getMinimum(data);
    maximum_ = legend.getMaximum(data);
    if (Unit const *const unit = legend.getUnit()) {
        minimum_ = unit->fromBase(minimum_, legend.getActiveUnit());
        maximum_ = unit->fromBase(maximum_, legend.getActiveUnit());
    }
}

void RangeCalculator::chooseLegendTicks(Legend2::Legend const &legend, Legend2::Data const &data, bool horizontal,
                                        double length)
{
    int const limit = legend.getMaxTicks() < 0 ? DEFAULT_LEGEND_TICKS : legend.getMaxTicks();
    if (legend.isDiscrete())
        legend.getDiscreteTicks(data, true, &tickValues_, &tickIndices_);
    else if (horizontal)
        chooseHorizontalTicks(length, limit, legend.getColorMode());
    else
        chooseVerticalTicks(length, limit, legend.getColorMode());
}

void RangeCalculator::computePositions(double length)
{
    // The widest intervals are measured in halves, so that no extent is infinite.
    double const shrink = std::isfinite(maximum_ - minimum_) ? 1.0 : 0.5;
    double const extent = maximum_ * shrink - minimum_ * shrink;
    double const scale = length / extent;
    for (double value : tickValues_) {
        double const distance = value * shrink - minimum_ * shrink;
        tickPositions_.push_back(std::isfinite(scale) ? distance * scale : distance / extent * length);
    }
}

void RangeCalculator::computeTexts(bool horizontal)
{
    std::size_t const count = tickValues_.size();
    texts_.resize(count);
    textSizes_.resize(count);
    drawTexts_.assign(count, true);
    maxLabelWidth_ = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        texts_[i] = labelText(tickValues_[i], digits_);
        textSizes_[i] = Calculator::getInstance()->computeTextSize(font_, texts_[i]);
        maxLabelWidth_ = std::max(maxLabelWidth_, textSizes_[i].x);
    }
    dropCrowdedLabels(horizontal);
}

void RangeCalculator::dropCrowdedLabels(bool horizontal)
{
    // The first and the last label go before their neighbours. Those in between have room by the number of ticks.
    std::size_t const count = tickValues_.size();
    if (count <= 2)
        return;
    auto const reachesNext = [&](std::size_t i) {
        double const extent = horizontal ? textSizes_[i].x : textSizes_[i].y;
        return tickPositions_[i] + extent > tickPositions_[i + 1];
    };
    if (reachesNext(0))
        drawTexts_[1] = false;
    if (reachesNext(count - 2))
        drawTexts_[count - 2] = false;
}

} // namespace Zem::Fig2
