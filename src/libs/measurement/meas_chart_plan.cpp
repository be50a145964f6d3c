#include "meas_chart_plan.h"

#include "meas_chart_look.h"
#include "meas_names.h"

#include <ZemFig2ChartInterface.h>
#include <ZemFig2ChartMarker.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>
#include <set>

namespace Zem::Measurement {

using namespace Fig2;

namespace {

constexpr double GAP = DBL_MAX;
constexpr double SECONDS_OF_MILLISECOND = 0.001;

void secondsFromFirst(std::vector<double> *numbers)
{
    auto const first = std::find_if(numbers->begin(), numbers->end(), [](double time) { return std::isfinite(time); });
    if (first == numbers->end()) {
        return;
    }
    double const begin = *first;
    for (double &number : *numbers) {
        number = (number - begin) * SECONDS_OF_MILLISECOND;
    }
}

void convertToBase(UnitData const &unit, std::vector<double> *numbers)
{
    if (!unit.hasUnit() || unit.getCurrentUnit() == unit.getUnit()->getBaseUnit()) {
        return;
    }
    for (double &number : *numbers) {
        number = unit.getUnit()->toBase(number, unit.getCurrentUnit());
    }
}

/// What a chart takes: numbers in the base unit, gaps for all that is none.
void prepare(ProjectToken const &token, std::vector<double> *numbers)
{
    if (token.type == ColumnType_t::DATE_TIME) {
        secondsFromFirst(numbers);
    } else {
        convertToBase(token.unit, numbers);
    }
    std::replace_if(
        numbers->begin(), numbers->end(), [](double number) { return !std::isfinite(number); }, GAP);
}

/// The least and the greatest of all numbers that it was shown.
class Range
{
public:
    void widen(std::vector<double> const &numbers)
    {
        for (double const number : numbers) {
            if (number != GAP) {
                range_.x = std::min(range_.x, number);
                range_.y = std::max(range_.y, number);
            }
        }
    }

    /// A single number is no range: an axis could not show it.
    bool exists() const { return range_.x < range_.y; }
    BaVec2d<double> const &value() const { return range_; }

private:
    BaVec2d<double> range_{DBL_MAX, -DBL_MAX};
};

/// None where x and y were not read at the same moment; a later look finds them in step.
void addPoints(std::vector<double> const &x, std::vector<double> const &y, ChartDataset *dataset)
{
    if (x.size() != y.size()) {
        return;
    }
    for (std::size_t i = 0; i < x.size(); ++i) {
        dataset->addPoint(ChartPoint(static_cast<int>(i), {x[i], y[i]}, y[i]));
    }
}

std::vector<double> rowNumbers(std::size_t rows)
{
    std::vector<double> numbers(rows);
    std::iota(numbers.begin(), numbers.end(), 1.0);
    return numbers;
}

std::unique_ptr<ChartDataset> makeDataset(ProjectToken const &token, std::size_t order)
{
    auto dataset = std::make_unique<ChartDataset>(token.name);
    ChartParameters look;
    proposeLook(order, &look);
    dataset->setParameters(look);
    dataset->setDisplayText(displayText(token));
    return dataset;
}

} // namespace

struct ChartPlan::Ranges
{
    Range x;
    Range y;
};

bool isChartY(ProjectToken const &token)
{
    return token.type == ColumnType_t::NUMBER || token.type == ColumnType_t::INTEGER;
}

bool isChartX(ProjectToken const &token)
{
    return isChartY(token) || token.type == ColumnType_t::DATE_TIME;
}

void setMark(ChartMark const &mark, ChartData *data)
{
    data->clearMarkers();
    if (mark.x) {
        data->addMarker(new LineChartMarker(*mark.x));
        data->addMarker(new PointsChartMarker(mark.points));
    }
    for (NamedPlace const &named : mark.named) {
        auto marker = std::make_unique<NamedPointChartMarker>();
        marker->setPoint(named.place);
        marker->setName(named.point.name);
        marker->setSymbol(named.point.symbol);
        data->addMarker(marker.get());
        marker.release();
    }
}

QString ChartPlan::Source::signature() const
{
    if (isBuiltInStage()) {
        return QStringLiteral("stage");
    }
    return QStringLiteral("%1 %2 %3 %4")
        .arg(isSeries() ? 'r' : 's')
        .arg(token->id)
        .arg(token->modified)
        .arg(token->title);
}

std::optional<ChartPlan::Source> ChartPlan::find(ProjectContents const &contents, QString const &name)
{
    if (ProjectToken const *const token = contents.findToken(name)) {
        return Source{token, nullptr};
    }
    if (ProjectSeries const *const series = contents.findSeries(name)) {
        return Source{series, series};
    }
    return std::nullopt;
}

std::optional<ChartPlan> ChartPlan::make(ProjectContents const &contents, QString const &chartToken,
                                         std::vector<NamedPoint> const &points)
{
    QString nameX;
    std::vector<QString> namesY;
    if (!ChartInterface::parseToken(chartToken, &nameX, &namesY)) {
        return std::nullopt;
    }
    ChartPlan plan(contents);
    std::optional<Source> const x = nameX == STAGE_TOKEN ? Source{} : find(contents, nameX);
    if (!x || (x->token && !isChartX(*x->token))) {
        return std::nullopt;
    }
    plan.x_ = *x;
    std::set<QString> taken; // a name may stand in the token twice
    for (QString const &name : namesY) {
        std::optional<Source> const y = find(contents, name);
        if (y && isChartY(*y->token) && taken.insert(name).second) {
            plan.ys_.push_back(*y);
        }
    }
    std::copy_if(points.begin(), points.end(), std::back_inserter(plan.points_),
                 [&taken](NamedPoint const &point) { return taken.contains(point.token); });
    return plan.ys_.empty() ? std::nullopt : std::optional(plan);
}

bool ChartPlan::belongsToX(Source const &y) const
{
    if (x_.isSeries() && y.isSeries()) {
        return x_.series->table == y.series->table;
    }
    return x_.isBuiltInStage() || x_.isSeries() == y.isSeries();
}

bool ChartPlan::hasStages() const
{
    return std::any_of(ys_.begin(), ys_.end(), [this](Source const &y) { return !y.isSeries() && belongsToX(y); });
}

QString ChartPlan::signature() const
{
    QStringList parts{x_.signature()};
    for (Source const &y : ys_) {
        parts << y.signature();
    }
    if (hasStages()) {
        parts << QString::number(contents_->stagesModified());
    }
    std::transform(points_.begin(), points_.end(), std::back_inserter(parts), signatureOf);
    return parts.join(QLatin1Char('\n'));
}

std::vector<double> ChartPlan::stageNumbers() const
{
    return {contents_->stages().begin(), contents_->stages().end()};
}

std::vector<double> ChartPlan::read(Source const &source) const
{
    if (source.isBuiltInStage()) {
        return stageNumbers();
    }
    std::vector<double> numbers = source.isSeries()
                                      ? contents_->project().seriesNumbers(*source.series)
                                      : contents_->project().numbersByStage(*source.token, contents_->stages());
    prepare(*source.token, &numbers);
    return numbers;
}

void ChartPlan::fill(Source const &y, std::vector<double> const &x, ChartDataset *dataset, Ranges *ranges) const
{
    std::vector<double> const numbers = read(y);
    bool const overRows = y.isSeries() && !x_.isSeries();
    std::vector<double> const rows = overRows ? rowNumbers(numbers.size()) : std::vector<double>();
    addPoints(overRows ? rows : x, numbers, dataset);
    ranges->x.widen(overRows ? rows : x);
    ranges->y.widen(numbers);
}

std::unique_ptr<ChartData> ChartPlan::build() const
{
    auto data = std::make_unique<ChartData>();
    bool const needsX = std::any_of(ys_.begin(), ys_.end(), [this](Source const &y) { return belongsToX(y); });
    std::vector<double> const x = needsX ? read(x_) : std::vector<double>();
    Ranges ranges;
    for (std::size_t order = 0; order < ys_.size(); ++order) {
        auto dataset = makeDataset(*ys_[order].token, order);
        if (belongsToX(ys_[order])) {
            fill(ys_[order], x, dataset.get(), &ranges);
        }
        data->addDataset(dataset.get());
        dataset.release();
    }
    data->setHasAxisXRange(ranges.x.exists());
    data->setHasAxisYRange(ranges.y.exists());
    data->setAxisXRange(ranges.x.value());
    data->setAxisYRange(ranges.y.value());
    setUnits(data.get());
    if (ranges.y.exists()) {
        data->computeLegendData();
    }
    data->setComputeStatistics(true);
    data->setSupportsStageMarkers(hasStages());
    data->setSupportsPointMarkers(hasStages());
    return data;
}

/// Curves of different quantities share an axis, but no unit of it.
void ChartPlan::setUnits(ChartData *data) const
{
    bool const isTime = x_.token && x_.token->type == ColumnType_t::DATE_TIME;
    data->setUnitX(isTime ? UnitData(uTime) : x_.token ? x_.token->unit : UnitData());
    UnitData const &unit = ys_.front().token->unit;
    bool const agree =
        std::all_of(ys_.begin(), ys_.end(), [&](Source const &y) { return y.token->unit.getUnit() == unit.getUnit(); });
    data->setUnitY(agree ? unit : UnitData());
}

std::optional<std::size_t> ChartPlan::indexOfStage(unsigned int stage) const
{
    std::vector<unsigned int> const &stages = contents_->stages();
    auto const found = std::lower_bound(stages.begin(), stages.end(), stage);
    bool const exists = found != stages.end() && *found == stage;
    return exists ? std::optional(static_cast<std::size_t>(found - stages.begin())) : std::nullopt;
}

/// Rows are counted from 1.
std::optional<std::size_t> ChartPlan::indexOf(unsigned int number, Source const &y) const
{
    if (!y.isSeries()) {
        return indexOfStage(number);
    }
    return number > 0 ? std::optional<std::size_t>(number - 1) : std::nullopt;
}

void ChartPlan::markStage(std::size_t index, ChartData const &data, ChartMark *mark) const
{
    for (Source const &y : ys_) {
        if (y.isSeries() || !belongsToX(y)) {
            continue;
        }
        ChartDataset const &dataset = *data.getDataset(y.token->name);
        auto const point = dataset.getPointBegin(static_cast<unsigned int>(index));
        if (point == dataset.getPointEnd() || point->point.x == GAP) {
            continue;
        }
        mark->x = point->point.x;
        if (point->isValid()) {
            mark->points.push_back(point->point);
        }
    }
}

std::vector<NamedPlace> ChartPlan::placesOf(Source const &y, ChartData const &data) const
{
    std::vector<NamedPlace> places;
    for (NamedPoint const &point : points_) {
        if (point.token != y.token->name) {
            continue;
        }
        if (auto const place = findPlace(point, *data.getDataset(point.token), indexOf(point.number, y))) {
            places.push_back({*place, point});
        }
    }
    return places;
}

ChartMark ChartPlan::markAt(StageIdentifier const &stage, ChartData const &data) const
{
    ChartMark mark;
    if (auto const index = indexOfStage(stage.getIdentifier())) {
        markStage(*index, data, &mark);
    }
    for (Source const &y : ys_) {
        std::vector<NamedPlace> const places = placesOf(y, data);
        mark.named.insert(mark.named.end(), places.begin(), places.end());
    }
    return mark;
}

} // namespace Zem::Measurement
