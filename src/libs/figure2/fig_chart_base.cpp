// The settings of ChartBase, and the values it offers to labels.
#include "ZemFig2Chart.h"

#include "ZemFig2Connector.h"
#include "fig_loan.h"
#include "fig_value.h"

#include <ZemTokenContainer.h>
#include <ZemToleranceParams.h>
#include <ZemTranslate.h>

#include <array>
#include <cmath>
#include <functional>
#include <optional>

namespace Zem::Fig2 {

namespace {

Value textValue(UnitData const &unit)
{
    return unit.hasUnit() ? Value(unit.getUnitName()) : Value();
}

Value numberValue(double number)
{
    return Value(number, static_cast<Unit const *>(nullptr));
}

/// What `better` (less or greater) prefers among the coordinates of the valid points.
template <double BaVec2d<double>::*coordinate, class Better>
Value extremeOf(ChartDataset const &dataset, Better const &better)
{
    std::optional<double> extreme;
    for (auto it = dataset.getPointBegin(0); it != dataset.getPointEnd(); ++it) {
        double const number = it->point.*coordinate;
        if (it->isValid() && (!extreme || better(number, *extreme)))
            extreme = number;
    }
    return extreme ? numberValue(*extreme) : Value();
}

/// The sum over the valid points of what `term` makes of y.
template <class Term>
double sumOf(ChartDataset const &dataset, unsigned int *count, Term const &term)
{
    double sum = 0.0;
    *count = 0;
    for (auto it = dataset.getPointBegin(0); it != dataset.getPointEnd(); ++it) {
        if (!it->isValid())
            continue;
        sum += term(it->point.y);
        ++*count;
    }
    return sum;
}

/// Mean of y over the valid points, 0 without one.
double computeAverage(ChartDataset const &dataset)
{
    unsigned int count = 0;
    double const sum = sumOf(dataset, &count, [](double y) { return y; });
    return count == 0 ? 0.0 : sum / count;
}

/// The sample variance of y; false for less than two valid points. The colour scale's sigma is that of the population:
/// it describes the values shown, this one estimates what they were drawn from.
bool computeVariance(ChartDataset const &dataset, double *variance)
{
    double const mean = computeAverage(dataset);
    unsigned int count = 0;
    double const sum = sumOf(dataset, &count, [mean](double y) { return (y - mean) * (y - mean); });
    if (count < 2)
        return false;
    *variance = sum / (count - 1);
    return true;
}

Value varianceOf(ChartDataset const &dataset)
{
    double variance = 0.0;
    return computeVariance(dataset, &variance) ? numberValue(variance) : Value();
}

Value deviationOf(ChartDataset const &dataset)
{
    double variance = 0.0;
    return computeVariance(dataset, &variance) && variance >= 0.0 ? numberValue(std::sqrt(variance)) : Value();
}

/// A token of a dataset.
struct Statistic
{
    QLatin1StringView prefix;
    char const *title;
    Value (*valueOf)(ChartBase const &, ChartDataset const &);
};

/// In the order in which they are tried and listed.
constexpr std::array<Statistic, 8> STATISTICS{{
    {ChartBase::TOKEN_NAME, "name",
     [](ChartBase const &chart, ChartDataset const &data) { return Value(chart.getDatasetDescription(&data)); }},
    {ChartBase::TOKEN_MIN_X, "minimum x",
     [](ChartBase const &, ChartDataset const &data) {
         return extremeOf<&BaVec2d<double>::x>(data, std::less<double>());
     }},
    {ChartBase::TOKEN_MIN_Y, "minimum y",
     [](ChartBase const &, ChartDataset const &data) {
         return extremeOf<&BaVec2d<double>::y>(data, std::less<double>());
     }},
    {ChartBase::TOKEN_MAX_X, "maximum x",
     [](ChartBase const &, ChartDataset const &data) {
         return extremeOf<&BaVec2d<double>::x>(data, std::greater<double>());
     }},
    {ChartBase::TOKEN_MAX_Y, "maximum y",
     [](ChartBase const &, ChartDataset const &data) {
         return extremeOf<&BaVec2d<double>::y>(data, std::greater<double>());
     }},
    {ChartBase::TOKEN_AVERAGE, "average",
     [](ChartBase const &, ChartDataset const &data) { return numberValue(computeAverage(data)); }},
    {ChartBase::TOKEN_VARIANCE, "variance",
     [](ChartBase const &, ChartDataset const &data) { return varianceOf(data); }},
    {ChartBase::TOKEN_DEVIATION, "standard deviation",
     [](ChartBase const &, ChartDataset const &data) { return deviationOf(data); }},
}};

QString titleOf(char const *text)
{
    return translate("Figure_Chart_Token", text);
}

TokenInfo unitToken(QLatin1StringView name, char const *title)
{
    return {TokenInfo::CATEGORY_UNIT, TokenInfo::TYPE_STRING, name, titleOf(title)};
}

TokenInfo statisticToken(Statistic const &statistic, QString const &id)
{
    auto const type = statistic.prefix == ChartBase::TOKEN_NAME ? TokenInfo::TYPE_STRING : TokenInfo::TYPE_DOUBLE;
    return {TokenInfo::CATEGORY_STATISTICS, type, statistic.prefix + id, titleOf(statistic.title)};
}

} // namespace

ChartBase::ChartBase(Type_t type) : AreaBase(type)
{
    LineStyle border = getBorder();
    border.setWidth(0.1);
    border.setColor(Color(0, 0, 0));
    AreaBase::setBorder(border);
}

ChartBase::ChartBase(ChartBase const &other)
    : AreaBase(other), ChartMarkerFrame(other), token_(other.token_), axisX_(other.axisX_), axisY_(other.axisY_),
      grid_(other.grid_), innerBorder_(other.innerBorder_), leftMargin_(other.leftMargin_),
      rightMargin_(other.rightMargin_), showCurrentStage_(other.showCurrentStage_),
      showPointMarkers_(other.showPointMarkers_), currentStageStyle_(other.currentStageStyle_),
      pointMarkerSymbol_(other.pointMarkerSymbol_), legend_(other.legend_), legendData_(other.legendData_),
      tokenModifiedCounter_(other.tokenModifiedCounter_), clipMinX_(other.clipMinX_), clipMaxX_(other.clipMaxX_),
      clipMinY_(other.clipMinY_), clipMaxY_(other.clipMaxY_), plotOffset_(other.plotOffset_),
      plotSize_(other.plotSize_), dataOrigin_(other.dataOrigin_), dataScale_(other.dataScale_)
{
}

void ChartBase::setAxisX(Axis const &axis)
{
    axisX_ = axis;
    invalidate();
}

void ChartBase::setAxisY(Axis const &axis)
{
    axisY_ = axis;
    invalidate();
}

void ChartBase::setGrid(Grid const &grid)
{
    grid_ = grid;
    invalidate();
}

void ChartBase::setInnerBorder(LineStyle const &style)
{
    innerBorder_ = style;
    invalidate();
}

void ChartBase::setLeftMargin(double margin)
{
    leftMargin_ = margin;
    invalidate();
}

void ChartBase::setRightMargin(double margin)
{
    rightMargin_ = margin;
    invalidate();
}

void ChartBase::setShowCurrentStage(bool show)
{
    showCurrentStage_ = show;
    invalidate();
}

void ChartBase::setShowPointMarkers(bool show)
{
    showPointMarkers_ = show;
    invalidate();
}

void ChartBase::setCurrentStageStyle(LineStyle const &style)
{
    currentStageStyle_ = style;
    invalidate();
}

void ChartBase::setPointMarkerSymbol(Symbol const &symbol)
{
    pointMarkerSymbol_ = symbol;
    invalidate();
}

unsigned int ChartBase::getEstimatedObjectSize() const
{
    std::size_t const own = sizeof(ChartBase) - sizeof(AreaBase) - 2 * sizeof(Axis);
    auto const text = static_cast<std::size_t>(token_.size()) * sizeof(QChar);
    return AreaBase::getEstimatedObjectSize() + axisX_.getEstimatedObjectSize() + axisY_.getEstimatedObjectSize() +
           static_cast<unsigned int>(own + text);
}

bool ChartBase::isDataValid(StageIdentifier const &stage, FigureTokenInterface const *tokens) const
{
    if (!AreaBase::isDataValid(stage, tokens))
        return false;
    if (token_.isEmpty() || !ChartLoan(tokens, token_))
        return true;
    return tokens->getModifiedCounter(token_) == tokenModifiedCounter_;
}

bool ChartBase::computeConnectorPoints(Connector const *connector, FigureTokenInterface const *tokens,
                                       BaVec2d<double> *from, BaVec2d<double> *to) const
{
    Element const *other = connector->getSource() == this ? connector->getTarget() : connector->getSource();
    // Two charts would ask each other for ever. Only a damaged file connects them.
    if (!other || dynamic_cast<ChartBase const *>(other))
        return false;
    return other->computeConnectorPoints(connector, tokens, from, to);
}

bool ChartBase::getLegendData(FigureTokenInterface const *tokens, Legend2::Legend *legend, Legend2::Data *data,
                              bool *showTolerances, Legend2::ToleranceParams *tolerance,
                              Legend2::HistogramData *histogram, bool *canDrawColors) const
{
    if (canDrawColors)
        *canDrawColors = true;
    ChartLoan const chart(tokens, token_);
    Legend2::Legend const *chartLegend = nullptr;
    Legend2::Data const *chartLegendData = nullptr;
    Legend2::HistogramData const *chartHistogram = nullptr;
    if (!chart || !chart->getLegendData(&chartLegend, &chartLegendData, &chartHistogram))
        return false;
    *legend = *chartLegend;
    *data = *chartLegendData;
    *showTolerances = false;
    *tolerance = Legend2::ToleranceParams();
    if (histogram)
        *histogram = *chartHistogram;
    return true;
}

ChartParameters const *ChartBase::getChartParameters(ChartDataset const *dataset) const
{
    return &dataset->getParameters();
}

QString ChartBase::getDatasetDescription(ChartDataset const *dataset) const
{
    return dataset->getDisplayText();
}

void ChartBase::getTokens(ChartData const *data, std::vector<TokenInfo> *tokens) const
{
    tokens->push_back(unitToken(TOKEN_UNIT_AXIS_X, "unit axis x"));
    tokens->push_back(unitToken(TOKEN_UNIT_AXIS_Y, "unit axis y"));
    if (!data)
        return;
    if (data->getTokenInterface()) {
        std::vector<TokenInfo> ofData;
        data->getTokenInterface()->getTokens(&ofData);
        tokens->insert(tokens->end(), ofData.begin(), ofData.end());
    }
    if (!data->getComputeStatistics())
        return;
    for (auto it = data->getDatasetBegin(); it != data->getDatasetEnd(); ++it) {
        if (!isDatasetUsed(it->first))
            continue;
        for (Statistic const &statistic : STATISTICS)
            tokens->push_back(statisticToken(statistic, it->first));
    }
}

Value ChartBase::getValue(StageIdentifier const &stage, ChartData const *data, QString const &token) const
{
    if (auto const known = valueCache_.find(token); known != valueCache_.end())
        return known->second;
    if (token == TOKEN_UNIT_AXIS_X)
        return textValue(axisX_.getVisibleUnit());
    if (token == TOKEN_UNIT_AXIS_Y)
        return textValue(axisY_.getVisibleUnit());
    if (!data)
        return {};
    return valueCache_.emplace(token, findValue(stage, data, token)).first->second;
}

/// A value of the data, else a statistic.
Value ChartBase::findValue(StageIdentifier const &stage, ChartData const *data, QString const &token) const
{
    std::array<TokenInterface const *, 2> const sources{data->getTokenInterface(), data->getTokenContainer()};
    for (TokenInterface const *source : sources) {
        Value const value = source ? source->getValue(token, IndexIdentifier::NO_INDEX, stage) : Value();
        if (hasValue(value))
            return value;
    }
    for (Statistic const &statistic : STATISTICS) {
        if (!token.startsWith(statistic.prefix))
            continue;
        ChartDataset const *dataset = findDatasetForToken(data, token, statistic.prefix);
        return dataset ? statistic.valueOf(*this, *dataset) : Value();
    }
    return {};
}

ChartDataset const *ChartBase::findDatasetForToken(ChartData const *data, QString const &token,
                                                   QLatin1StringView prefix) const
{
    QString const id = token.mid(prefix.size());
    return data->datasetExists(id) && isDatasetUsed(id) ? data->getDataset(id) : nullptr;
}

} // namespace Zem::Fig2
