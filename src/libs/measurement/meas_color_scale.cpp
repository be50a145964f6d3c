#include <ZemMeasColorScale.h>

#include <ZemColorMap.h>
#include <ZemMeasProject.h>
#include <ZemParse.h>

#include <algorithm>
#include <cmath>
#include <map>

namespace Zem::Measurement {

namespace {

constexpr QLatin1StringView TOKEN_KEY{"token"};
constexpr QLatin1StringView SHOW_TOLERANCES_KEY{"show_tolerances"};
constexpr int DEFAULT_INTERVALS = 10;

/// Average and deviation of all the values, in two passes. `values` is not empty.
Legend2::Data statisticsOf(std::vector<double> const &values)
{
    auto const [minimum, maximum] = std::minmax_element(values.begin(), values.end());
    double const count = static_cast<double>(values.size());
    double sum = 0.0;
    for (double value : values)
        sum += value;
    double const average = sum / count;
    double squares = 0.0;
    for (double value : values)
        squares += (value - average) * (value - average);
    Legend2::Data data;
    data.setDynamicMinimum(*minimum);
    data.setDynamicMaximum(*maximum);
    data.setAverage(average);
    data.setSigmaValue(std::sqrt(squares / count));
    return data;
}

/// The ticks that the scale gets where there is room for all of them, in the base unit.
std::vector<double> ticksOf(Legend2::Legend const &legend, Legend2::Data const &data)
{
    std::vector<double> ticks;
    if (legend.isDiscrete()) {
        std::vector<int> indices;
        legend.getDiscreteTicks(data, false, &ticks, &indices);
        return ticks;
    }
    Unit const *unit = legend.getUnit();
    auto const shown = [&](double value) { return unit ? unit->fromBase(value, legend.getActiveUnit()) : value; };
    int const intervals = legend.getMaxTicks() < 0 ? DEFAULT_INTERVALS : legend.getMaxTicks();
    Legend2::Scaling::computeDistribution(shown(legend.getMinimum(data)), shown(legend.getMaximum(data)),
                                          std::min(intervals, Legend2::Scaling::MAX_TICKS) + 1, false,
                                          legend.getColorMode(), &ticks);
    for (double &tick : ticks)
        tick = unit ? unit->toBase(tick, legend.getActiveUnit()) : tick;
    return ticks;
}

/// One count for each interval, under the value in its middle; the last one has its upper bound, too.
Legend2::HistogramData histogramOf(std::vector<double> const &values, std::vector<double> const &ticks)
{
    Legend2::HistogramData histogram;
    if (ticks.size() < 2)
        return histogram;
    std::map<double, unsigned int> counts;
    for (double value : values) {
        if (value < ticks.front() || value > ticks.back())
            continue;
        auto const above = std::min(std::upper_bound(ticks.begin(), ticks.end(), value), ticks.end() - 1);
        ++counts[*(above - 1) + (*above - *(above - 1)) * 0.5];
    }
    histogram.addHistogram(counts);
    return histogram;
}

} // namespace

QString ColorScale::getParameterString() const
{
    return Parse::createString(TOKEN_KEY, token) + Parse::createBool(SHOW_TOLERANCES_KEY, showTolerances) +
           legend.getParameterString() + tolerance.getParameterString();
}

void ColorScale::createFromParameterString(QString &parameters)
{
    QString rest = parameters;
    ColorScale read = *this;
    if (Parse::parameterExists(rest, TOKEN_KEY))
        read.token = Parse::getString(rest, TOKEN_KEY);
    if (Parse::parameterExists(rest, SHOW_TOLERANCES_KEY))
        read.showTolerances = Parse::getBool(rest, SHOW_TOLERANCES_KEY);
    read.legend.createFromParameterString(rest);
    read.tolerance.createFromParameterString(rest);
    *this = read;
    parameters = rest;
}

void applyColorScale(ColorScale const &scale)
{
    Legend2::ColorMap::setGlobalLegend(scale.legend, Legend2::Data());
    Legend2::ColorMap::setTolerance(scale.showTolerances, scale.tolerance);
    Legend2::ColorMap::setHistogramData(Legend2::HistogramData());
}

void applyColorScale(Project const &project, ColorScale const &scale)
{
    if (scale.token.isEmpty())
        return applyColorScale(scale);
    UnitData unit;
    std::vector<double> const values = project.numbers(scale.token, &unit);
    ColorScale labelled = scale;
    if (!labelled.legend.getUnit() && unit.hasUnit())
        labelled.legend.setUnitData(unit);
    applyColorScale(labelled);
    if (values.empty())
        return;
    Legend2::Data const data = statisticsOf(values);
    Legend2::ColorMap::setGlobalLegend(labelled.legend, data);
    Legend2::ColorMap::setHistogramData(histogramOf(values, ticksOf(labelled.legend, data)));
}

void applyColorScale(Project const &project)
{
    applyColorScale(project, project.colorScale().value_or(ColorScale()));
}

} // namespace Zem::Measurement
