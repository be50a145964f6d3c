#include "ZemFig2ChartData.h"

#include <ZemError.h>
#include <ZemTokenContainer.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace Zem::Fig2 {

namespace {

[[noreturn]] void throwProgError(char const *function, unsigned int line, char const *text)
{
    throw ProgError(function, "fig_chart_data", line, text);
}

template <class Datasets>
auto findDataset(Datasets &datasets, QString const &id)
{
    auto const found = datasets.find(id);
    if (found == datasets.end())
        throwProgError("Zem::Fig2::ChartData::getDataset", __LINE__, "Dataset does not exist");
    return found->second;
}

/// Hands every y that is there to `visit`, whatever the x.
template <class Visit>
void forEachY(ChartData::Datasets const &datasets, Visit const &visit)
{
    for (auto const &[id, dataset] : datasets) {
        ChartDataset const &points = *dataset;
        for (auto point = points.getPointBegin(0); point != points.getPointEnd(); ++point) {
            if (point->point.y != DBL_MAX)
                visit(point->point.y);
        }
    }
}

Legend2::Data statisticsOf(ChartData::Datasets const &datasets)
{
    double minimum = DBL_MAX;
    double maximum = -DBL_MAX;
    double sum = 0.0;
    unsigned int count = 0;
    forEachY(datasets, [&](double y) {
        minimum = std::min(minimum, y);
        maximum = std::max(maximum, y);
        sum += y;
        ++count;
    });
    double const average = count > 0 ? sum / count : 0.0;
    double squares = 0.0;
    forEachY(datasets, [&](double y) { squares += (average - y) * (average - y); });

    Legend2::Data data;
    data.setDynamicMinimum(minimum);
    data.setDynamicMaximum(maximum);
    data.setAverage(average);
    data.setSigmaValue(count > 0 ? std::sqrt(squares / count) : 0.0);
    return data;
}

} // namespace

ChartData::ChartData() = default;

ChartData::ChartData(ChartData const &other) : ChartData()
{
    values_ = other.values_;
    copyOwned(other);
}

// Deliberately shares the pointers.
ChartData &ChartData::operator=(ChartData const &other) = default;

ChartData::~ChartData()
{
    clear();
    delete tokenContainer_;
}

void ChartData::copyOwned(ChartData const &other)
{
    for (auto const &[id, dataset] : other.datasets_) {
        auto copied = std::make_unique<ChartDataset>(*dataset);
        datasets_.emplace(id, copied.get());
        copied.release();
    }
    markers_.reserve(other.markers_.size());
    for (ChartMarker const *marker : other.markers_)
        markers_.push_back(marker->copy());
    if (!other.tokenContainer_)
        return;
    tokenContainer_ = new TokenContainer(*other.tokenContainer_);
    if (other.values_.tokenInterface == other.tokenContainer_)
        values_.tokenInterface = tokenContainer_;
}

void ChartData::addDataset(ChartDataset *dataset)
{
    if (!datasets_.try_emplace(dataset->getId(), dataset).second)
        throwProgError("Zem::Fig2::ChartData::addDataset", __LINE__, "Duplicate dataset id");
}

void ChartData::removeDataset(QString const &id)
{
    auto const found = datasets_.find(id);
    if (found == datasets_.end())
        throwProgError("Zem::Fig2::ChartData::removeDataset", __LINE__, "Dataset not found");
    delete found->second;
    datasets_.erase(found);
}

ChartDataset const *ChartData::getDataset(QString const &id) const
{
    return findDataset(datasets_, id);
}

ChartDataset *ChartData::getDataset(QString const &id)
{
    return findDataset(datasets_, id);
}

void ChartData::addMarker(ChartMarker *marker)
{
    markers_.push_back(marker);
}

void ChartData::clearMarkers()
{
    for (ChartMarker *marker : markers_)
        delete marker;
    markers_.clear();
}

void ChartData::clearDatasets()
{
    for (auto const &[id, dataset] : datasets_)
        delete dataset;
    datasets_.clear();
}

void ChartData::clear()
{
    clearDatasets();
    clearMarkers();
    values_.histogramData.clear();
    values_.hasLegendData = false;
}

void ChartData::setLegendData(Legend2::Legend const &legend, Legend2::Data const &data)
{
    setLegendData(legend, data, Legend2::HistogramData());
}

void ChartData::setLegendData(Legend2::Legend const &legend, Legend2::Data const &data,
                              Legend2::HistogramData const &histogram)
{
    values_.legend = legend;
    values_.legendData = data;
    values_.histogramData = histogram;
    values_.hasLegendData = true;
}

bool ChartData::getLegendData(Legend2::Legend const **legend, Legend2::Data const **data) const
{
    *legend = values_.hasLegendData ? &values_.legend : nullptr;
    *data = values_.hasLegendData ? &values_.legendData : nullptr;
    return values_.hasLegendData;
}

bool ChartData::getLegendData(Legend2::Legend const **legend, Legend2::Data const **data,
                              Legend2::HistogramData const **histogram) const
{
    *histogram = values_.hasLegendData ? &values_.histogramData : nullptr;
    return getLegendData(legend, data);
}

void ChartData::computeLegendData()
{
    Legend2::Legend legend(uLength);
    legend.setUnitData(values_.unitY);
    setLegendData(legend, statisticsOf(datasets_));
}

void ChartData::setTokenContainer(TokenContainer *container)
{
    if (container == tokenContainer_)
        return;
    delete tokenContainer_;
    tokenContainer_ = container;
}

QString ChartData::toString() const
{
    QString text;
    for (auto const &[id, dataset] : datasets_)
        text += QLatin1Char('\n') + dataset->toString();
    return text;
}

} // namespace Zem::Fig2
