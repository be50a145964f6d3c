// The painting of ChartBase but for its curves.
#include "ZemFig2Chart.h"

#include "ZemFig2Painter.h"
#include "fig_loan.h"

#include <ZemError.h>
#include <ZemTranslate.h>

#include <algorithm>
#include <cmath>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int POINTS_PER_STEP = 10000;
constexpr double THIN = 0.1;
constexpr int MODE_AT_ONCE = 0;
constexpr double MESSAGE_INDENT = 1.0;

QString messageFor(QString const &token)
{
    return token.isEmpty() ? translate("Figure_Chart_err", "chart token not set")
                           : translate("Figure_Chart_err", "unknown chart token: %1").arg(token);
}

/// Top left corners of both axes beside the plot rectangle.
void computeAxisOrigins(Axis const &axisX, Axis const &axisY, BaVec2d<double> const &offset,
                        BaVec2d<double> const &size, BaVec2d<double> *originX, BaVec2d<double> *originY)
{
    bool const top = axisX.getType() == Axis::HORIZONTAL_TOP;
    bool const left = axisY.getType() == Axis::VERTICAL_LEFT;
    if ((!top && axisX.getType() != Axis::HORIZONTAL_BOTTOM) || (!left && axisY.getType() != Axis::VERTICAL_RIGHT))
        throw ProgError("Zem::Fig2::ChartBase::draw", "fig_chart", __LINE__, "Unhandled axis position");
    *originX = {offset.x - axisX.getMargin(), top ? offset.y - axisX.getSize().y : offset.y + size.y};
    *originY = {left ? offset.x - axisY.getSize().x : offset.x + size.x, offset.y - axisY.getMargin()};
}

} // namespace

bool ChartBase::draw(FigureTokenInterface const *tokens, Painter *painter, int step) const
{
    ChartLoan const data(tokens, token_);
    if (step == 0) {
        drawBackground(painter);
        if (data)
            drawFrame(painter);
        else
            drawEmpty(painter);
        drawBorder(painter);
    }
    if (!data)
        return true;
    if (!drawContents(painter, data.get(), step))
        return false;
    drawInnerBorder(painter);
    drawBorder(painter);
    return true;
}

/// Keeps a chart without data in sight.
void ChartBase::drawEmpty(Painter *painter) const
{
    Rotation const rotation(this);
    BaVec2d<double> const corner = getOrigin() - getSize() * 0.5;
    LineStyle const frame(THIN, LineStyle::STYLE_FULL, getFontColor());
    painter->drawRect(corner, getSize(), frame, FillStyle::null, rotation);
    painter->setClipping(Rect(corner, getSize()), rotation);
    painter->drawText(getDrawingOrigin() + BaVec2d<double>(MESSAGE_INDENT, MESSAGE_INDENT), getFont(),
                      messageFor(token_), getFontColor(), rotation);
    painter->resetClipping();
}

void ChartBase::drawFrame(Painter *painter) const
{
    Rotation const rotation(this);
    BaVec2d<double> size;
    BaVec2d<double> offset;
    getSizeAndOffset(&size, &offset);
    BaVec2d<double> originX;
    BaVec2d<double> originY;
    computeAxisOrigins(axisX_, axisY_, offset, size, &originX, &originY);
    if (axisX_.getVisible())
        axisX_.draw(painter, originX, rotation);
    if (axisY_.getVisible())
        axisY_.draw(painter, originY, rotation);
    if (grid_.getLineStyle().getStyle() != LineStyle::STYLE_NONE)
        grid_.draw(painter, offset, size, &axisX_, &axisY_, rotation);
    drawInnerBorder(painter);
}

void ChartBase::drawInnerBorder(Painter *painter) const
{
    BaVec2d<double> size;
    BaVec2d<double> offset;
    getSizeAndOffset(&size, &offset);
    painter->drawRect(offset, size, innerBorder_, FillStyle::null, Rotation(this));
}

ChartParameters const &ChartBase::parametersOf(ChartDataset const *dataset) const
{
    ChartParameters const *parameters = getChartParameters(dataset);
    return parameters ? *parameters : dataset->getParameters();
}

/// Whether the drawing of the dataset can stop at any point.
bool ChartBase::hasMultistepCapability(ChartDataset const *dataset) const
{
    switch (parametersOf(dataset).getStyle()) {
    case ChartParameters::STYLE_POINTS:
    case ChartParameters::STYLE_SPIKES:
    case ChartParameters::STYLE_X_MARKER:
    case ChartParameters::STYLE_Y_MARKER:
        return true;
    default:
        return false;
    }
}

/// Those that are shown, in the order in which they are drawn: bars, and then all others on top of them, each in the
/// order of the ids.
ChartBase::ShownDatasets ChartBase::collectDatasets(ChartData const *data, std::size_t *numberOfPoints) const
{
    ShownDatasets datasets;
    ShownDatasets others;
    *numberOfPoints = 0;
    for (auto it = data->getDatasetBegin(); it != data->getDatasetEnd(); ++it) {
        if (!isDatasetUsed(it->first))
            continue;
        *numberOfPoints += it->second->getNumberOfPoints();
        bool const bars = parametersOf(it->second).getStyle() == ChartParameters::STYLE_BARS;
        (bars ? datasets : others).push_back(it);
    }
    datasets.insert(datasets.end(), others.begin(), others.end());
    return datasets;
}

void ChartBase::drawAll(Painter *painter, ChartData const *data, ShownDatasets const &datasets) const
{
    for (auto const &shown : datasets)
        drawDataset(*shown->second, painter, 0, shown->second->getNumberOfPoints());
    drawOverlay(painter, data);
}

/// Curves and overlay, or the part of them that belongs to the step. True when nothing is left to be drawn.
bool ChartBase::drawContents(Painter *painter, ChartData const *data, int step) const
{
    // Later steps go on with the plan of the first one: to collect everything anew for each of them would cost the
    // square of the number of datasets.
    if (step == 0 || steps_.empty()) {
        std::size_t numberOfPoints = 0;
        ShownDatasets const datasets = collectDatasets(data, &numberOfPoints);
        if (painter->getMode() == MODE_AT_ONCE || numberOfPoints < POINTS_PER_STEP) {
            drawAll(painter, data, datasets);
            return true;
        }
        planSteps(datasets);
    }
    return drawStep(painter, data, static_cast<std::size_t>(step));
}

void ChartBase::planSteps(ShownDatasets const &datasets) const
{
    steps_.clear();
    numberOfSteps_ = 0;
    for (auto const &shown : datasets) {
        ChartDataset const *dataset = shown->second;
        steps_.push_back({shown->first, numberOfSteps_});
        numberOfSteps_ += hasMultistepCapability(dataset) ? dataset->getNumberOfPoints() / POINTS_PER_STEP + 1 : 1;
    }
}

bool ChartBase::drawStep(Painter *painter, ChartData const *data, std::size_t step) const
{
    if (step >= numberOfSteps_) {
        steps_.clear();
        drawOverlay(painter, data);
        return true;
    }
    auto const next =
        std::upper_bound(steps_.begin(), steps_.end(), step,
                         [](std::size_t wanted, StepPlan const &plan) { return wanted < plan.firstStep; });
    StepPlan const &plan = *std::prev(next);
    if (!data->datasetExists(plan.dataset))
        return false;
    ChartDataset const *dataset = data->getDataset(plan.dataset);
    if (hasMultistepCapability(dataset))
        drawDataset(*dataset, painter, static_cast<unsigned int>(step - plan.firstStep) * POINTS_PER_STEP,
                    POINTS_PER_STEP);
    else
        drawDataset(*dataset, painter, 0, dataset->getNumberOfPoints());
    return false;
}

void ChartBase::drawOverlay(Painter *painter, ChartData const *data) const
{
    BaVec2d<double> size;
    BaVec2d<double> offset;
    getSizeAndOffset(&size, &offset);
    Rotation const rotation(this);
    if (!data->getInfoPoints().empty()) {
        LineStyle const line(THIN, LineStyle::STYLE_FULL, data->getInfoPointColor());
        painter->setClipping(Rect(offset, size), rotation);
        for (BaVec2d<double> const &point : data->getInfoPoints()) {
            BaVec2d<double> const place = getFigureCoordinates(point);
            if (point.x != DBL_MAX && std::isfinite(place.x))
                painter->drawLine({place.x, offset.y}, {place.x, offset.y + size.y}, line, rotation);
            if (point.y != DBL_MAX && std::isfinite(place.y))
                painter->drawLine({offset.x, place.y}, {offset.x + size.x, place.y}, line, rotation);
        }
        painter->resetClipping();
    }
    for (auto it = data->getChartMarkerBegin(); it != data->getChartMarkerEnd(); ++it)
        (*it)->draw(painter, this, offset, size);
}

} // namespace Zem::Fig2
