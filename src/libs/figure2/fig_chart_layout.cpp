// The layout of ChartBase: ranges, colours, axes, and where values lie on the page.
#include "ZemFig2Chart.h"

#include "ZemFig2Connector.h"
#include "ZemFig2LabelBase.h"
#include "ZemFig2Legend.h"
#include "fig_chart_projection.h"
#include "fig_loan.h"

#include <ZemColorMap.h>
#include <ZemError.h>

#include <algorithm>
#include <cfloat>
#include <cmath>

namespace Zem::Fig2 {

namespace {

constexpr double TOLERANCE = 1e-50;
constexpr double GREATEST_MARGIN_SHARE = 0.4;
constexpr int MOST_LAYOUT_PASSES = 4;

/// Minimum and maximum of one coordinate over the shown datasets.
struct DataRange
{
    double minimum = DBL_MAX;
    double maximum = -DBL_MAX;

    void include(BaVec2d<double> const &range)
    {
        minimum = std::min(minimum, range.x);
        maximum = std::max(maximum, range.y);
    }
    /// A range of one value has no extent to be drawn over.
    void widenPoint()
    {
        if (std::abs(minimum - maximum) < TOLERANCE) {
            minimum -= 1.0;
            maximum += 1.0;
        }
    }
};

/// `asked` is what the data ask for, null when they ask for nothing; `shown` is `none` when no value is shown.
double rangeEnd(Axis::RangeMode mode, double const *asked, double shown, double none, double present)
{
    if (mode == Axis::RANGE_MODE_OPTIMUM && asked)
        return *asked;
    return mode != Axis::RANGE_MODE_MANUAL && shown != none ? shown : present;
}

void setAxisRange(Axis *axis, DataRange const &shown, bool hasAsked, BaVec2d<double> const &asked)
{
    BaVec2d<double> const present = axis->getRange();
    axis->setRange(
        {rangeEnd(axis->getRangeModeMin(), hasAsked ? &asked.x : nullptr, shown.minimum, DBL_MAX, present.x),
         rangeEnd(axis->getRangeModeMax(), hasAsked ? &asked.y : nullptr, shown.maximum, -DBL_MAX, present.y)});
}

/// What a connected legend brings into a chart.
struct LegendScale
{
    Legend2::Legend const *legend = nullptr;
    Legend2::Data const *data = nullptr;
    bool showTolerances = false;
};

/// The local scale of the legend. One that was never given a scale of its own hands on the one that it shows, which is
/// that of its elements or of the application.
LegendScale scaleOf(Legend const &legend)
{
    LegendScale scale;
    Legend2::ToleranceParams const *tolerance = nullptr;
    legend.getLocalLegendData(&scale.legend, &scale.data);
    legend.getLocalToleranceParams(&scale.showTolerances, &tolerance);
    if (!scale.legend || !scale.data)
        throw ProgError("Zem::Fig2::ChartBase::computeDynamicData", "fig_chart", __LINE__, "parameter vectors not set");
    if (*scale.legend == Legend2::Legend() && *scale.data == Legend2::Data() && !scale.showTolerances)
        return {&legend.getShownLegend(), &legend.getShownData(), legend.getShownToleranceMode()};
    return scale;
}

Element *otherEnd(Connector const *connector, Element const *element)
{
    return connector->getSource() == element ? connector->getTarget() : connector->getSource();
}

/// Millimetres per unit along an axis. Without an extent of the range all values lie in one place.
double scaleAlong(Axis const &axis)
{
    BaVec2d<double> const range = axis.getVisibleRange();
    double const extent = range.y - range.x;
    return std::abs(extent) < TOLERANCE ? 0.0 : (axis.getLength() - 2.0 * axis.getMargin()) / extent;
}

} // namespace

void ChartBase::computeDynamicData(StageIdentifier const &stage, FigureTokenInterface const *tokens)
{
    AreaBase::computeDynamicData(stage, tokens);
    valueCache_.clear();
    if (token_.isEmpty() || !tokens)
        return;
    ChartLoan const data(tokens, token_);
    if (data)
        updateRanges(stage, data.get());
    updateScale(data.get());
    updateLayout();
    updateProjection();
    updateCoveredPolygon();
    tokenModifiedCounter_ = tokens->getModifiedCounter(token_);
}

void ChartBase::updateRanges(StageIdentifier const &stage, ChartData const *data)
{
    DataRange rangeX;
    DataRange rangeY;
    for (auto it = data->getDatasetBegin(); it != data->getDatasetEnd(); ++it) {
        if (!isDatasetUsed(it->first))
            continue;
        BaVec2d<double> x;
        BaVec2d<double> y;
        it->second->getRange(&x, &y);
        rangeX.include(x);
        rangeY.include(y);
    }
    rangeX.widenPoint();
    rangeY.widenPoint();
    setAxisRange(&axisX_, rangeX, data->getHasAxisXRange(), data->getAxisXRange());
    setAxisRange(&axisY_, rangeY, data->getHasAxisYRange(), data->getAxisYRange());
    axisX_.computeDynamicData(stage, data);
    axisY_.computeDynamicData(stage, data);
}

void ChartBase::resetScale()
{
    legend_ = Legend2::Legend(uLength);
    legendData_ = Legend2::Data();
}

/// Colours come from a connected legend, else from the data.
void ChartBase::updateScale(ChartData const *data)
{
    bool conflict = false;
    bool const found = takeScaleOfLegends(&conflict);
    if (conflict)
        resetScale();
    if (found)
        return;
    Legend2::Legend const *legend = nullptr;
    Legend2::Data const *legendData = nullptr;
    if (data && data->getLegendData(&legend, &legendData)) {
        legend_ = *legend;
        legendData_ = *legendData;
    } else {
        resetScale();
    }
}

/// Whether a legend is connected. Legends that contradict each other, or one that shows tolerances, are a conflict.
bool ChartBase::takeScaleOfLegends(bool *conflict)
{
    bool found = false;
    for (auto it = getConnectorBegin(); it != getConnectorEnd() && !*conflict; ++it) {
        auto const *legend = dynamic_cast<Legend const *>(otherEnd(*it, this));
        if (!legend)
            continue;
        LegendScale const scale = scaleOf(*legend);
        if (!found) {
            legend_ = *scale.legend;
            legendData_ = *scale.data;
        } else {
            *conflict = !(legend_ == *scale.legend) || !(legendData_ == *scale.data);
        }
        *conflict = *conflict || scale.showTolerances;
        found = true;
    }
    return found;
}

double ChartBase::limitedMargin(double margin) const
{
    return std::min(margin, GREATEST_MARGIN_SHARE * getDrawingSize().x);
}

void ChartBase::updateAxes(int digits)
{
    double const left = limitedMargin(leftMargin_);
    double const right = limitedMargin(rightMargin_);
    axisX_.update(left, right, digits);
    axisY_.update(left, right, digits);
}

/// The lengths of the axes as long as their labels need the room that they need now.
BaVec2d<double> ChartBase::computeAxisLengths() const
{
    BaVec2d<double> length = getDrawingSize();
    double const marginX = axisX_.getMargin();
    if (axisY_.getVisible()) {
        bool const left = axisY_.getType() == Axis::VERTICAL_LEFT;
        double const beside = limitedMargin(left ? leftMargin_ : rightMargin_);
        double const opposite = limitedMargin(left ? rightMargin_ : leftMargin_);
        length.x -= std::max(axisY_.getSize().x, beside) - marginX;
        length.x -= std::max(opposite - marginX, 0.0);
    }
    if (axisX_.getVisible())
        length.y -= axisX_.getSize().y - axisY_.getMargin();
    return length;
}

/// How much room the labels need tells how long the axes can be, and the final ticks follow from that. Other ticks may
/// have other labels: then it is done again, so that axes and plot fit each other.
void ChartBase::updateLayout()
{
    int const digits = Legend2::ColorMap::getGlobalLegendParams().getDigits();
    for (Axis *axis : {&axisX_, &axisY_}) {
        axis->setFont(getFont());
        axis->setFontColor(getFontColor());
    }
    // From the same start each time: the layout shall not depend on the one before.
    BaVec2d<double> length = getDrawingSize();
    for (int pass = 0; pass < MOST_LAYOUT_PASSES; ++pass) {
        axisX_.setLength(length.x);
        axisY_.setLength(length.y);
        updateAxes(digits);
        length = computeAxisLengths();
        if (pass > 0 && length.x == axisX_.getLength() && length.y == axisY_.getLength())
            break;
    }
    BaVec2d<double> minimumSize(2.0 * getMargin(), 2.0 * getMargin());
    for (Axis const *axis : {&axisX_, &axisY_}) {
        if (axis->getVisible())
            minimumSize += axis->getMinimumSize();
    }
    setMinimumSize(minimumSize);
}

void ChartBase::updateProjection()
{
    getSizeAndOffset(&plotSize_, &plotOffset_);
    BaVec2d<double> const x = axisX_.getVisibleRange();
    BaVec2d<double> const y = axisY_.getVisibleRange();
    dataOrigin_ = {x.x, y.x};
    dataScale_ = computeScale();
    // What lies further outside than the plot is wide is as good as there, and keeps huge numbers off the painter.
    double const extentX = std::abs(x.y - x.x);
    double const extentY = std::abs(y.y - y.x);
    clipMinX_ = x.x - extentX;
    clipMaxX_ = x.y + extentX;
    clipMinY_ = y.x - extentY;
    clipMaxY_ = y.y + extentY;
}

/// A label at the end of a connector widens the area from which others keep away.
void ChartBase::updateCoveredPolygon()
{
    for (auto it = getConnectorBegin(); it != getConnectorEnd(); ++it) {
        auto const *label = dynamic_cast<LabelBase const *>(otherEnd(*it, this));
        if (!label || label->getType() != LABEL)
            continue;
        BaVec2d<double> const anchor = label->getOrigin();
        BaVec2d<double> direction = getOrigin() - anchor;
        double const length = direction.length();
        if (length < TOLERANCE)
            direction = {0.0, 0.0};
        else if (length != TOLERANCE)
            direction = direction * (1.0 / length);
        double const half = label->getConnectorStyle().getWidth() * 0.5;
        BaVec2d<double> const across(direction.y * half, -direction.x * half);
        coveredPolygon_.addPoint(anchor + across);
        coveredPolygon_.addPoint(anchor - across);
    }
    coveredPolygon_ = coveredPolygon_.getConvexHull();
}

void ChartBase::getMargins(double *left, double *right, double *top, double *bottom) const
{
    *left = *right = *top = *bottom = 0.0;
    bool const atTop = axisX_.getType() == Axis::HORIZONTAL_TOP;
    bool const atLeft = axisY_.getType() == Axis::VERTICAL_LEFT;
    double const marginX = axisX_.getMargin();
    double const marginY = axisY_.getMargin();
    double const width = axisY_.getSize().x;
    double const height = axisX_.getSize().y;
    if (axisX_.getVisible() && axisY_.getVisible()) {
        *left = atLeft ? width : marginX;
        *right = atLeft ? marginX : width;
        *top = atTop ? height : marginY;
        *bottom = atTop ? marginY : height;
    } else if (axisX_.getVisible()) {
        *left = *right = marginX;
        (atTop ? *top : *bottom) = height;
    } else if (axisY_.getVisible()) {
        (atLeft ? *left : *right) = width;
        *top = *bottom = marginY;
    }
    // Requested room counts where an axis along x is there to be lined up with those of other charts.
    if (axisX_.getVisible()) {
        *left = std::max(*left, limitedMargin(leftMargin_));
        *right = std::max(*right, limitedMargin(rightMargin_));
    }
    *left = limitedMargin(*left);
    *right = limitedMargin(*right);
}

void ChartBase::getSizeAndOffset(BaVec2d<double> *size, BaVec2d<double> *offset) const
{
    double left = 0.0;
    double right = 0.0;
    double top = 0.0;
    double bottom = 0.0;
    getMargins(&left, &right, &top, &bottom);
    BaVec2d<double> const available = getDrawingSize();
    *offset = getDrawingOrigin() + BaVec2d<double>(left, top);
    *size = {std::max(available.x - (left + right), 0.0), std::max(available.y - (top + bottom), 0.0)};
}

BaVec2d<double> ChartBase::computeScale() const
{
    return {scaleAlong(axisX_), scaleAlong(axisY_)};
}

void ChartBase::getDataOriginAndScale(BaVec2d<double> *origin, BaVec2d<double> *scale) const
{
    BaVec2d<double> size;
    BaVec2d<double> offset;
    getSizeAndOffset(&size, &offset);
    *scale = computeScale();
    origin->x = offset.x - scale->x * axisX_.getVisibleRange().x;
    origin->y = offset.y + size.y + scale->y * axisY_.getVisibleRange().x;
}

ChartProjection ChartBase::getProjection() const
{
    return {AxisProjection(axisX_.getVisibleUnit(), clipMinX_, clipMaxX_),
            AxisProjection(axisY_.getVisibleUnit(), clipMinY_, clipMaxY_),
            plotOffset_,
            plotSize_,
            dataOrigin_,
            dataScale_};
}

BaVec2d<double> ChartBase::getFigureCoordinates(BaVec2d<double> const &point) const
{
    return getProjection()(point);
}

BaVec2d<double> ChartBase::getChartCoordinates(BaVec2d<double> const &point) const
{
    BaVec2d<double> origin;
    BaVec2d<double> scale;
    getDataOriginAndScale(&origin, &scale);
    BaVec2d<double> const turnedBack = Rotation(this).removeFrom(point);
    return {(turnedBack.x - origin.x) / scale.x, -(turnedBack.y - origin.y) / scale.y};
}

} // namespace Zem::Fig2
