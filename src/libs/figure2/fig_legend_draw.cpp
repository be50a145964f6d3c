// The painting of Legend.
#include "ZemFig2Legend.h"

#include "ZemFig2Painter.h"
#include "ZemFig2Rotation.h"

#include <ZemLegendHandler.h>

#include <algorithm>
#include <map>

namespace Zem::Fig2 {

namespace {

constexpr Color FALLBACK_COLOR{0, 0, 0};
constexpr int VERTICAL = 1;

} // namespace

bool Legend::draw(FigureTokenInterface const *, Painter *painter, int step) const
{
    if (step != 0)
        return true;
    drawBackground(painter);
    drawTitle(painter);
    drawExtrema(painter);
    drawColors(painter);
    drawTicks(painter);
    drawLabels(painter);
    drawHistogram(painter);
    drawBorder(painter);
    return true;
}

/// `box` is relative to the drawing origin.
void Legend::drawBox(Painter *painter, Rect const &box, LineStyle const &line, FillStyle const &fill) const
{
    painter->drawRect(getDrawingOrigin() + box.p0(), {box.width, box.height}, line, fill, Rotation(this));
}

void Legend::drawOutline(Painter *painter, Rect const &box) const
{
    if (tickBoxStyle_.getStyle() != LineStyle::STYLE_NONE)
        drawBox(painter, box, tickBoxStyle_, FillStyle::null);
}

void Legend::drawTitle(Painter *painter) const
{
    if (!unitTitle_.isEmpty())
        painter->drawText(getDrawingOrigin() + titleRect_.p0(), getFont(), unitTitle_, getFontColor(), Rotation(this));
}

void Legend::drawExtrema(Painter *painter) const
{
    if (!hasExtremaBoxes())
        return;
    if (legend_.isMaxColorValid())
        drawBox(painter, maxColorRect_, LineStyle::null, FillStyle(legend_.getMaxColor()));
    drawOutline(painter, maxColorRect_);
    if (legend_.isMinColorValid())
        drawBox(painter, minColorRect_, LineStyle::null, FillStyle(legend_.getMinColor()));
    drawOutline(painter, minColorRect_);
}

void Legend::drawColors(Painter *painter) const
{
    if (showTolerances_) {
        drawToleranceBoxes(painter);
        return;
    }
    if (dataValid_ && legend_.isDiscrete())
        drawBlocks(painter);
    else if (dataValid_)
        drawStrip(painter);
    if (!isDrawBlocksActive())
        drawOutline(painter, colorsRect_);
}

void Legend::drawToleranceBoxes(Painter *painter) const
{
    std::vector<Legend2::TolerancePassType_t> const types = tolerance_.getPassTypesForDrawing();
    for (std::size_t i = 0; i < types.size() && i + 1 < tickPositions_.size(); ++i) {
        Rect const box = blockRect(i);
        if (tolerance_.isColorValid(types[i]))
            drawBox(painter, box, LineStyle::null, FillStyle(tolerance_.getColor(types[i])));
        drawOutline(painter, box);
    }
}

void Legend::drawStrip(Painter *painter) const
{
    Legend2::LegendHandler handler(&legend_, &legendData_);
    handler.setToleranceMode(false);
    std::vector<Color> colors = handler.getColors();
    bool const vertical = getOrientation() == VERTICAL;
    // They come from the minimum on, which is at the bottom of an upright strip.
    if (vertical)
        std::reverse(colors.begin(), colors.end());
    painter->drawColors(getDrawingOrigin() + colorsRect_.p0(), {colorsRect_.width, colorsRect_.height}, vertical,
                        colors, Rotation(this));
}

void Legend::drawBlocks(Painter *painter) const
{
    Legend2::LegendHandler handler(&legend_, &legendData_);
    handler.setToleranceMode(false);
    for (std::size_t i = 0; i + 1 < tickPositions_.size(); ++i) {
        Rect const box = blockRect(i);
        double const middle = tickValues_[i] + (tickValues_[i + 1] - tickValues_[i]) * 0.5;
        if (handler.isValid(middle))
            drawBox(painter, box, LineStyle::null, FillStyle(handler.getColor(middle, FALLBACK_COLOR)));
        if (isDrawBlocksActive())
            drawOutline(painter, box);
    }
}

void Legend::drawTicks(Painter *painter) const
{
    if (!hasTicks())
        return;
    BaVec2d<double> const origin = getDrawingOrigin();
    bool const vertical = getOrientation() == VERTICAL;
    // On the side of the labels, as long as the room that the layout keeps for them.
    BaVec2d<double> const tick =
        vertical ? BaVec2d<double>(getTickLength(), 0.0) : BaVec2d<double>(0.0, getTickLength());
    for (double position : tickPositions_) {
        BaVec2d<double> const from =
            vertical ? BaVec2d<double>(colorsRect_.x + barWidth_, colorsRect_.y + colorLength_ - position)
                     : BaVec2d<double>(colorsRect_.x + position, colorsRect_.y + barWidth_);
        painter->drawLine(origin + from, origin + from + tick, tickStyle_, Rotation(this));
    }
}

void Legend::drawLabels(Painter *painter) const
{
    for (unsigned int i = 0; i < labelCount_; ++i) {
        Rect rect;
        if (getPlacedLabelRect(i, &rect))
            painter->drawText(getDrawingOrigin() + rect.p0(), getFont(), texts_[i], getFontColor(), Rotation(this));
    }
}

void Legend::drawHistogram(Painter *painter) const
{
    if (!hasHistogramColumn())
        return;
    drawBox(painter, histogramRect_, tickBoxStyle_, FillStyle::null);
    if (!dataValid_)
        return;
    BaVec2d<double> const origin = getDrawingOrigin();
    bool const vertical = getOrientation() == VERTICAL;
    for (std::size_t i = 0; i + 1 < tickPositions_.size(); ++i) {
        double const y = histogramRect_.y + colorLength_ - tickPositions_[i];
        double const x = histogramRect_.x + tickPositions_[i];
        BaVec2d<double> const from =
            vertical ? BaVec2d<double>(histogramRect_.x, y) : BaVec2d<double>(x, histogramRect_.y);
        BaVec2d<double> const to = vertical ? BaVec2d<double>(histogramRect_.x + histogramRect_.width, y)
                                            : BaVec2d<double>(x, histogramRect_.y + histogramRect_.height);
        painter->drawLine(origin + from, origin + to, tickStyle_, Rotation(this));
    }
    if (histogram_.isValid() && tickValues_.size() >= 2 && tickValues_.front() != tickValues_.back())
        drawHistogramBars(painter);
}

/// One bar for each interval of the ticks, from the side of the colours.
void Legend::drawHistogramBars(Painter *painter) const
{
    bool const vertical = getOrientation() == VERTICAL;
    double const scale =
        (vertical ? histogramRect_.width : histogramRect_.height) / static_cast<double>(histogram_.getMaxCount());
    BaVec2d<double> const base = getDrawingOrigin() + histogramRect_.p2();
    std::map<double, unsigned int> counts;
    histogram_.getHistogram(&counts);
    LineStyle bar = tickStyle_;
    bar.setStyle(LineStyle::STYLE_FULL);
    auto value = counts.lower_bound(tickValues_.front());
    for (std::size_t i = 0; i + 1 < tickValues_.size(); ++i) {
        double count = 0.0;
        // The upper bound belongs to the next interval, that of the last one to none.
        for (; value != counts.end() && value->first < tickValues_[i + 1]; ++value)
            count += value->second;
        if (count == 0.0)
            continue;
        double const halfBin = (tickPositions_[i + 1] - tickPositions_[i]) * 0.5;
        double const middle = tickPositions_[i] + halfBin;
        bar.setWidth(2.0 * halfBin);
        BaVec2d<double> const from = vertical ? BaVec2d<double>(base.x, base.y - middle)
                                              : BaVec2d<double>(base.x - colorLength_ + middle, base.y);
        BaVec2d<double> const to =
            vertical ? from - BaVec2d<double>(count * scale, 0.0) : from - BaVec2d<double>(0.0, count * scale);
        painter->drawLine(from, to, bar, Rotation(this));
    }
}

} // namespace Zem::Fig2
