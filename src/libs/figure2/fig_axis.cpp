#include "ZemFig2Axis.h"

#include "ZemFig2Calculator.h"
#include "ZemFig2ChartData.h"
#include "ZemFig2Painter.h"
#include "ZemFig2RangeCalculator.h"

#include <ZemError.h>

#include <algorithm>

namespace Zem::Fig2 {

namespace {

constexpr int DERIVE_DIGITS = -1;

/// The greatest width and the greatest height of the labels.
BaVec2d<double> greatestSize(std::vector<BaVec2d<double>> const &sizes)
{
    BaVec2d<double> greatest(0.0, 0.0);
    for (BaVec2d<double> const &size : sizes) {
        greatest.x = std::max(greatest.x, size.x);
        greatest.y = std::max(greatest.y, size.y);
    }
    return greatest;
}

} // namespace

void Axis::computeDynamicData(StageIdentifier const &, ChartData const *data)
{
    dataUnit_ = isHorizontal() ? data->getUnitX() : data->getUnitY();
}

/// Data keeps its quantity. What the user chose is the scale of that quantity only.
UnitData Axis::computeUnitData() const
{
    UnitData unit = dataUnit_;
    if (unit.hasUnit() && unit.getUnit() == unit_.getUnit())
        unit.setCurrentUnit(unit_.getCurrentUnit());
    return unit;
}

BaVec2d<double> Axis::computeVisibleRange(UnitData const &unit) const
{
    if (!unit.hasUnit())
        return range_;
    Unit const &quantity = *unit.getUnit();
    return {quantity.fromBase(range_.x, unit.getCurrentUnit()), quantity.fromBase(range_.y, unit.getCurrentUnit())};
}

int Axis::computeDigits(int digits) const
{
    switch (digitsMode_) {
    case DIGITS_MODE_MANUAL:
        return digits_;
    case DIGITS_MODE_AUTO:
        return DERIVE_DIGITS;
    case DIGITS_MODE_3D:
        return digits;
    }
    return 0;
}

void Axis::update(double minWidthLeft, double minWidthRight, int digits)
{
    if (isHorizontal())
        updateHorizontal(digits);
    else
        updateVertical(minWidthLeft, minWidthRight, digits);
}

void Axis::updateHorizontal(int digits)
{
    UnitData const unit = computeUnitData();
    BaVec2d<double> const range = computeVisibleRange(unit);
    RangeCalculator calculator(font_);
    calculator.computeHorizontal(range.x, range.y, length_, computeDigits(digits), ticks_);
    // The labels stick out by half their width at each end. That is known only now, and leaves less for the ticks.
    double const usable = length_ - calculator.getMaxLabelWidth();
    calculator.computeHorizontal(range.x, range.y, usable, computeDigits(digits), ticks_);
    takeTicks(calculator, unit, (length_ - usable) * 0.5);
    minimumSize_ = {2.0 * margin_, greatestSize(calculator.getTextSizes()).y + SPACING + tickLength_};
}

void Axis::updateVertical(double minWidthLeft, double minWidthRight, int digits)
{
    if (type_ != VERTICAL_LEFT && type_ != VERTICAL_RIGHT)
        throw ProgError("Zem::Fig2::Axis::updateVertical", "fig_axis", __LINE__, "Illegal axis type");
    UnitData const unit = computeUnitData();
    BaVec2d<double> const range = computeVisibleRange(unit);
    double const fontHeight = Calculator::getInstance()->getFontHeight(font_);
    RangeCalculator calculator(font_);
    calculator.computeVertical(range.x, range.y, length_ - fontHeight, computeDigits(digits), ticks_);
    takeTicks(calculator, unit, fontHeight * 0.5);
    double const width = greatestSize(calculator.getTextSizes()).x + SPACING + tickLength_;
    double const reserved = type_ == VERTICAL_LEFT ? minWidthLeft : minWidthRight;
    minimumSize_ = {std::max(width, reserved), 2.0 * margin_};
}

void Axis::takeTicks(RangeCalculator const &calculator, UnitData const &unit, double margin)
{
    visibleRange_ = {calculator.getMinimum(), calculator.getMaximum()};
    visibleUnit_ = unit;
    texts_ = calculator.getTexts();
    drawTexts_ = calculator.getDrawTexts();
    margin_ = margin;
    tickPositions_ = calculator.getTickPositions();
    for (double &position : tickPositions_)
        position += margin;
}

BaVec2d<double> Axis::getSize() const
{
    return isHorizontal() ? BaVec2d<double>(length_, minimumSize_.y) : BaVec2d<double>(minimumSize_.x, length_);
}

void Axis::draw(Painter *painter, BaVec2d<double> const &origin, Rotation const &rotation) const
{
    if (isHorizontal())
        drawHorizontal(painter, origin, rotation);
    else
        drawVertical(painter, origin, rotation);
}

void Axis::drawHorizontal(Painter *painter, BaVec2d<double> const &origin, Rotation const &rotation) const
{
    for (std::size_t i = 0; i < texts_.size(); ++i) {
        if (!drawTexts_[i])
            continue;
        double const x = origin.x + tickPositions_[i];
        BaVec2d<double> const size = Calculator::getInstance()->computeTextSize(font_, texts_[i]);
        double const tickY = type_ == HORIZONTAL_TOP ? origin.y + size.y + SPACING : origin.y;
        if (tickLength_ > 0.0)
            painter->drawLine({x, tickY}, {x, tickY + tickLength_}, lineStyle_, rotation);
        double const labelY = type_ == HORIZONTAL_BOTTOM ? origin.y + tickLength_ + SPACING : origin.y;
        painter->drawText({x - size.x * 0.5, labelY}, font_, texts_[i], fontColor_, rotation);
    }
}

/// Labels of a left axis end at their ticks, those of a right one begin there. Values grow upwards, the page downwards.
void Axis::drawVertical(Painter *painter, BaVec2d<double> const &origin, Rotation const &rotation) const
{
    bool const left = type_ == VERTICAL_LEFT;
    double const tickX = left ? origin.x + minimumSize_.x - tickLength_ : origin.x;
    for (std::size_t i = 0; i < texts_.size(); ++i) {
        if (!drawTexts_[i])
            continue;
        double const y = origin.y + length_ - tickPositions_[i];
        BaVec2d<double> const size = Calculator::getInstance()->computeTextSize(font_, texts_[i]);
        if (tickLength_ > 0.0)
            painter->drawLine({tickX, y}, {tickX + tickLength_, y}, lineStyle_, rotation);
        double const labelX = left ? tickX - SPACING - size.x : tickX + tickLength_ + SPACING;
        painter->drawText({labelX, y - size.y * 0.5}, font_, texts_[i], fontColor_, rotation);
    }
}

unsigned int Axis::getEstimatedObjectSize() const
{
    std::size_t bytes = sizeof(Axis) + tickPositions_.size() * sizeof(double) + drawTexts_.size() / 8;
    for (QString const &text : texts_)
        bytes += sizeof(QString) + static_cast<std::size_t>(text.capacity()) * sizeof(QChar);
    return static_cast<unsigned int>(bytes);
}

} // namespace Zem::Fig2
