// What of a Legend stands where.
#include "ZemFig2Legend.h"

#include "ZemFig2Calculator.h"
#include "ZemFig2RangeCalculator.h"
#include "ZemFig2Rotation.h"

#include <ZemError.h>
#include <ZemTranslate.h>

#include <algorithm>
#include <cfloat>
#include <cmath>

namespace Zem::Fig2 {

namespace {

constexpr int HORIZONTAL = 0;
constexpr int VERTICAL = 1;
constexpr int MAXIMUM_PASSES = 4;
constexpr double TICK_LENGTH = 1.0;
constexpr double HISTOGRAM_SHARE = 2.0; ///< of the bar's thickness
constexpr double SIZE_TOLERANCE = 1e-50;
constexpr double BAR_END_TOLERANCE = 1e-12;

/// Multiplied first, so that the last place is the length to the last bit.
double evenPlace(std::size_t i, std::size_t stretches, double length)
{
    return static_cast<double>(i) * length / static_cast<double>(stretches);
}

} // namespace

int Legend::getOrientation() const
{
    BaVec2d<double> const size = getDrawingSize();
    return size.x > size.y ? HORIZONTAL : VERTICAL;
}

bool Legend::isDrawBlocksActive() const
{
    return legend_.isDiscrete() && equalSizedBlocks_;
}

bool Legend::hasExtremaBoxes() const
{
    return dataValid_ && !showTolerances_ && legend_.getUseExtremaColors();
}

bool Legend::hasHistogramColumn() const
{
    return showHistogram_ && !showTolerances_;
}

bool Legend::hasTicks() const
{
    return dataValid_ && !showTolerances_ && !isDrawBlocksActive();
}

/// Border and box outlines keep their room also while they are not drawn.
double Legend::getFrameWidth() const
{
    return getBorder().getWidth() + tickBoxStyle_.getWidth();
}

double Legend::getTickLength() const
{
    return hasTicks() ? TICK_LENGTH : 0.0;
}

/// The least size can turn the bar round; then the other layout may ask for more again. What is shown must fit the
/// shape that the element has in the end.
void Legend::layOut()
{
    for (int pass = 0; pass < MAXIMUM_PASSES; ++pass) {
        int const orientation = getOrientation();
        computeTicks(true);
        computeLabelVisibility();
        applySizeRule();
        if (getOrientation() == orientation)
            return;
    }
}

void Legend::clearTicks()
{
    tickPositions_.clear();
    tickValues_.clear();
    tickIndices_.clear();
    texts_.clear();
    textSizes_.clear();
    drawTexts_.clear();
    labelWidth_ = 0.0;
    extremaTextSize_ = {0.0, 0.0};
}

void Legend::setTitle(QString const &title)
{
    unitTitle_ = title;
    BaVec2d<double> size(0.0, 0.0);
    if (!title.isEmpty())
        size = Calculator::getInstance()->computeTextSize(getFont(), title);
    titleWidth_ = size.x;
    titleHeight_ = size.y;
}

QString Legend::getScaleTitle(bool withUnit) const
{
    QString const title = QStringLiteral("[%1]");
    if (!dataValid_)
        return title.arg(translate("Fig_Legend", "invalid"));
    if (withUnit && !legend_.getUnitName().isEmpty())
        return title.arg(legend_.getUnitName());
    return QString();
}

void Legend::computeTicks(bool withUnit)
{
    clearTicks();
    if (showTolerances_) {
        setTitle(QStringLiteral("[%1]").arg(tolerance_.getTitle()));
        computeToleranceTicks();
    } else {
        setTitle(getScaleTitle(withUnit));
        computeScaleTicks();
    }
    labelCount_ = static_cast<unsigned int>(texts_.size());
    if (getOrientation() == HORIZONTAL)
        computePositionsHorizontal();
    else
        computePositionsVertical();
}

/// What is left of the element along the scale for the bar. An upright title stands in its way.
double Legend::computeColorLength(double titleExtent, double extremaExtent) const
{
    BaVec2d<double> const size = getDrawingSize();
    bool const horizontal = getOrientation() == HORIZONTAL;
    double const extent = horizontal ? size.x : size.y - titleExtent;
    double const length = std::max(extent - 2.0 * getMargin() - getFrameWidth() - extremaExtent, barWidth_);
    // A file may hold sizes that are no numbers.
    return std::isfinite(length) ? length : 1.0;
}

/// One text for each stretch between two positions.
void Legend::computeToleranceTicks()
{
    // Deliberately without the spacing behind the title.
    colorLength_ = computeColorLength(titleHeight_, 0.0);
    texts_ = tolerance_.getStringsForDrawing();
    if (texts_.empty())
        return;
    for (std::size_t i = 0; i <= texts_.size(); ++i)
        tickPositions_.push_back(evenPlace(i, texts_.size(), colorLength_));
    tickValues_.assign(tickPositions_.size(), DBL_MAX);
    for (QString const &text : texts_) {
        textSizes_.push_back(Calculator::getInstance()->computeTextSize(getFont(), text));
        labelWidth_ = std::max(labelWidth_, textSizes_.back().x);
    }
    drawTexts_.assign(texts_.size(), true);
}

/// The room that a text needs between the bar and the box of an extremum; the larger one of both ends.
BaVec2d<double> Legend::computeExtremaTextSize() const
{
    BaVec2d<double> size(0.0, 0.0);
    for (double limit : {legend_.getMinimum(legendData_), legend_.getMaximum(legendData_)}) {
        if (legend_.getUnit())
            limit = legend_.getUnit()->fromBase(limit, legend_.getActiveUnit());
        QString const text = QString::number(limit, 'f', std::max(legend_.getDigits(), 0));
        BaVec2d<double> const textSize = Calculator::getInstance()->computeTextSize(getFont(), text);
        size = {std::max(size.x, textSize.x), std::max(size.y, textSize.y)};
    }
    return size;
}

void Legend::computeScaleTicks()
{
    bool const horizontal = getOrientation() == HORIZONTAL;
    double extremaExtent = 0.0;
    if (hasExtremaBoxes()) {
        extremaTextSize_ = computeExtremaTextSize();
        // Deliberately only once along x.
        extremaExtent = horizontal ? barWidth_ + extremaTextSize_.x + tickBoxStyle_.getWidth()
                                   : 2.0 * (barWidth_ + extremaTextSize_.y + tickBoxStyle_.getWidth());
    }
    colorLength_ = computeColorLength(unitTitle_.isEmpty() ? 0.0 : titleHeight_ + getSpacing(), extremaExtent);
    if (!dataValid_)
        return;
    RangeCalculator range(getFont());
    range.computeForLegend(&legend_, &legendData_, horizontal, colorLength_, legend_.getDigits());
    takeOver(range);
    if (!isDrawBlocksActive() || tickPositions_.size() <= 2)
        return;
    double const first = tickPositions_.front();
    for (std::size_t i = 0; i < tickPositions_.size(); ++i)
        tickPositions_[i] = first + evenPlace(i, tickPositions_.size() - 1, colorLength_);
}

void Legend::takeOver(RangeCalculator const &range)
{
    tickPositions_ = range.getTickPositions();
    tickValues_ = range.getTickValues();
    tickIndices_ = range.getTickIndices();
    texts_ = range.getTexts();
    textSizes_ = range.getTextSizes();
    drawTexts_ = range.getDrawTexts();
    labelWidth_ = range.getMaxLabelWidth();
    if (!legend_.getUnit())
        return;
    for (double &value : tickValues_)
        value = legend_.getUnit()->toBase(value, legend_.getActiveUnit());
}

/// Upright, from top to bottom: title, box of the maximum, bar, box of the minimum. From left to right: histogram, bar,
/// ticks, labels. Title and columns stand about one middle.
void Legend::computePositionsVertical()
{
    if (getOrientation() != VERTICAL)
        throw ProgError("Zem::Fig2::Legend::computePositionsVertical", "fig_legend", __LINE__,
                        "Invalid use of function");
    double const inset = getMargin() + getFrameWidth() * 0.5;
    double const histogramWidth = hasHistogramColumn() ? HISTOGRAM_SHARE * barWidth_ + tickBoxStyle_.getWidth() : 0.0;
    double const columnsWidth = histogramWidth + barWidth_ + getTickLength() + getSpacing() + labelWidth_;
    double const contentWidth = std::max(columnsWidth, titleWidth_);
    double const extremumHeight = hasExtremaBoxes() ? barWidth_ + extremaTextSize_.y + tickBoxStyle_.getWidth() : 0.0;
    double titleExtent = 0.0;
    if (!unitTitle_.isEmpty())
        titleExtent = titleHeight_ + (showTolerances_ ? 0.0 : getSpacing());

    titleRect_ = {inset + (contentWidth - titleWidth_) * 0.5, inset, titleWidth_, titleHeight_};
    double const left = inset + (contentWidth - columnsWidth) * 0.5;
    double const top = inset + titleExtent + extremumHeight;
    double const barLeft = left + histogramWidth;
    colorsRect_ = {barLeft, top, barWidth_, colorLength_};
    maxColorRect_ = {barLeft, inset + titleExtent, barWidth_, barWidth_};
    minColorRect_ = {barLeft, top + colorLength_ + extremumHeight - barWidth_, barWidth_, barWidth_};
    histogramRect_ = {left, top, std::min(histogramWidth, HISTOGRAM_SHARE * barWidth_), colorLength_};
    labelsRect_ = {barLeft + barWidth_ + getTickLength() + getSpacing(), top, labelWidth_, colorLength_};

    // Along the bar it is the least length that counts: an element may be made smaller again.
    double const frame = 2.0 * getMargin() + getFrameWidth();
    setMinimumSize({frame + contentWidth, frame + titleExtent + 2.0 * extremumHeight + barWidth_});
    applyLegacyResize(getDrawingSize().x - getMinimumSize().x);
}

/// Lying, from left to right: box of the minimum, bar, box of the maximum. From top to bottom: title, histogram, bar,
/// ticks, labels.
void Legend::computePositionsHorizontal()
{
    if (getOrientation() != HORIZONTAL)
        throw ProgError("Zem::Fig2::Legend::computePositionsHorizontal", "fig_legend", __LINE__,
                        "Invalid use of function");
    double const inset = getMargin() + getFrameWidth() * 0.5;
    double const histogramHeight = hasHistogramColumn() ? HISTOGRAM_SHARE * barWidth_ + tickBoxStyle_.getWidth() : 0.0;
    double labelHeight = 0.0;
    for (BaVec2d<double> const &size : textSizes_)
        labelHeight = std::max(labelHeight, size.y);
    // Both boxes and the gaps beside them share the room that the bar left.
    double extremumWidth = 0.0;
    if (hasExtremaBoxes())
        extremumWidth = (barWidth_ + extremaTextSize_.x + tickBoxStyle_.getWidth()) * 0.5;
    double const boxWidth = std::min(barWidth_, extremumWidth);
    double const titleExtent = unitTitle_.isEmpty() ? 0.0 : titleHeight_ + getSpacing();
    double const contentWidth = std::max(colorLength_ + 2.0 * extremumWidth, titleWidth_);

    titleRect_ = {inset + (contentWidth - titleWidth_) * 0.5, inset, titleWidth_, titleHeight_};
    double const left = inset + (contentWidth - colorLength_) * 0.5;
    double const top = inset + titleExtent + histogramHeight;
    colorsRect_ = {left, top, colorLength_, barWidth_};
    minColorRect_ = {left - extremumWidth, top, boxWidth, barWidth_};
    maxColorRect_ = {left + colorLength_ + extremumWidth - boxWidth, top, boxWidth, barWidth_};
    histogramRect_ = {left, inset + titleExtent, colorLength_, std::min(histogramHeight, HISTOGRAM_SHARE * barWidth_)};
    labelsRect_ = {left, top + barWidth_ + getTickLength() + getSpacing(), colorLength_, labelHeight};

    double const frame = 2.0 * getMargin() + getFrameWidth();
    double const columnsHeight = histogramHeight + barWidth_ + getTickLength() + getSpacing() + labelHeight;
    setMinimumSize(
        {frame + std::max(barWidth_ + 2.0 * extremumWidth, titleWidth_), frame + titleExtent + columnsHeight});
    legacyResize_ = false;
}

/// Older files hold elements wider than their contents, which stood at the right.
void Legend::applyLegacyResize(double surplus)
{
    if (!legacyResize_)
        return;
    legacyResize_ = false;
    if (!(surplus > 0.0))
        return;
    setOrigin(getOrigin() + BaVec2d<double>(surplus * 0.5, 0.0));
    Element::setSize(getSize() - BaVec2d<double>(surplus, 0.0));
}

namespace {

/// The share of a growth by which the origin moves.
double pivotShare(Alignment_t alignment)
{
    switch (alignment) {
    case ALIGN_CENTER:
        return 0.5;
    case ALIGN_END:
        return 1.0;
    case ALIGN_BEGIN:
        break;
    }
    return 0.0;
}

} // namespace

void Legend::applySizeRule()
{
    BaVec2d<double> size = getSize();
    BaVec2d<double> const least = getMinimumSize();
    if (getAutoSize()) {
        double &shorter = size.x <= size.y ? size.x : size.y;
        shorter = size.x <= size.y ? least.x : least.y;
    }
    size = {std::max(size.x, least.x), std::max(size.y, least.y)};
    BaVec2d<double> const change = size - getSize();
    if (!(std::abs(change.x) > SIZE_TOLERANCE || std::abs(change.y) > SIZE_TOLERANCE))
        return;
    setOrigin(getOrigin() - BaVec2d<double>(change.x * pivotShare(getPivotAlignmentX()),
                                            change.y * pivotShare(getPivotAlignmentY())));
    Element::setSize(size);
}

void Legend::computeLabelRect(unsigned int index, Rect *rect) const
{
    if (!dataValid_ || index >= labelCount_)
        throw ProgError("Zem::Fig2::Legend::computeLabelRect", "fig_legend", __LINE__, "Invalid data index");
    double position = tickPositions_[index];
    if (showTolerances_)
        position = (position + tickPositions_[index + 1]) * 0.5;
    BaVec2d<double> const &size = textSizes_[index];
    if (getOrientation() == VERTICAL)
        *rect = {labelWidth_ - size.x, colorLength_ - position - size.y * 0.5, size.x, size.y};
    else
        *rect = {position - size.x * 0.5, 0.0, size.x, size.y};
}

namespace {

bool leavesBar(Rect const &rect, bool vertical, double colorLength)
{
    double const begin = vertical ? rect.y : rect.x;
    double const end = begin + (vertical ? rect.height : rect.width);
    return begin < -BAR_END_TOLERANCE || end > colorLength + BAR_END_TOLERANCE;
}

} // namespace

/// The first and the last label go before all others, and of these each before the next.
void Legend::computeLabelVisibility()
{
    if (!dataValid_ || labelCount_ < 2)
        return;
    drawTexts_.assign(labelCount_, true);
    bool const vertical = getOrientation() == VERTICAL;
    Rect first;
    Rect last;
    computeLabelRect(0, &first);
    computeLabelRect(labelCount_ - 1, &last);
    if (first.intersects(last))
        drawTexts_[labelCount_ - 1] = false;
    Rect reference = first;
    for (unsigned int i = 1; i + 1 < labelCount_; ++i) {
        Rect rect;
        computeLabelRect(i, &rect);
        drawTexts_[i] = !leavesBar(rect, vertical, colorLength_) && !rect.intersects(first) && !rect.intersects(last) &&
                        !rect.intersects(reference);
        if (drawTexts_[i])
            reference = rect;
    }
}

int Legend::getLUTIndexForLabelIndex(unsigned int index) const
{
    if (!dataValid_ || index >= labelCount_)
        return -1;
    if (showTolerances_)
        return static_cast<int>(index);
    return index < tickIndices_.size() ? tickIndices_[index] : -1;
}

/// The stretch of the bar from one position to the next.
Rect Legend::blockRect(std::size_t index) const
{
    double const begin = tickPositions_[index];
    double const length = tickPositions_[index + 1] - begin;
    if (getOrientation() == VERTICAL)
        return {colorsRect_.x, colorsRect_.y + colorLength_ - begin - length, barWidth_, length};
    return {colorsRect_.x + begin, colorsRect_.y, length, barWidth_};
}

bool Legend::getColorBoxRect(unsigned int index, Rect *rect) const
{
    if (!dataValid_ || !(showTolerances_ || legend_.isDiscrete()) || index + std::size_t{1} >= tickPositions_.size())
        return false;
    *rect = blockRect(index);
    return true;
}

bool Legend::getMinColorRect(Rect *rect) const
{
    if (hasExtremaBoxes())
        *rect = minColorRect_;
    return hasExtremaBoxes();
}

bool Legend::getMaxColorRect(Rect *rect) const
{
    if (hasExtremaBoxes())
        *rect = maxColorRect_;
    return hasExtremaBoxes();
}

bool Legend::getPlacedLabelRect(unsigned int index, Rect *rect) const
{
    if (!dataValid_ || index >= labelCount_ || !drawTexts_[index])
        return false;
    computeLabelRect(index, rect);
    rect->x += labelsRect_.x;
    rect->y += labelsRect_.y;
    return true;
}

bool Legend::getMinLabelRect(Rect *rect) const
{
    return !showTolerances_ && getPlacedLabelRect(0, rect);
}

bool Legend::getMaxLabelRect(Rect *rect) const
{
    return !showTolerances_ && labelCount_ > 0 && getPlacedLabelRect(labelCount_ - 1, rect);
}

bool Legend::getValueLabelRect(unsigned int index, Rect *rect) const
{
    return getPlacedLabelRect(index, rect);
}

bool Legend::getEditTitleRect(Rect *rect) const
{
    if (unitTitle_.isEmpty())
        return false;
    *rect = titleRect_;
    return true;
}

/// The outermost labels may reach out of the element.
void Legend::addLabelsToUpdatePolygon()
{
    Rotation const rotation(this);
    BaVec2d<double> const origin = getDrawingOrigin();
    for (unsigned int i = 0; i < labelCount_; ++i) {
        Rect rect;
        if (!getPlacedLabelRect(i, &rect))
            continue;
        Polygon2d outline(true);
        for (BaVec2d<double> const &corner : {rect.p0(), rect.p1(), rect.p2(), rect.p3()})
            outline.addPoint(rotation.applyTo(origin + corner));
        updatePolygon_.addPolygon(outline);
    }
}

} // namespace Zem::Fig2
