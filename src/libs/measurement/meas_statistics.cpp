#include "meas_statistics.h"

#include <ZemScaling.h>

#include <algorithm>
#include <cmath>
#include <map>

namespace Zem::Measurement {

namespace {

constexpr int DEFAULT_INTERVALS = 10;

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

} // namespace

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

Legend2::HistogramData histogramOf(std::vector<double> const &values, Legend2::Legend const &legend,
                                   Legend2::Data const &data)
{
    std::vector<double> const ticks = ticksOf(legend, data);
    Legend2::HistogramData histogram;
    if (ticks.size() < 2)
        return histogram;
    std::map<double, unsigned int> counts;
    for (double value : values) {
        if (value < ticks.front() || value > ticks.back())
            continue;
        // The last interval has its upper bound, too.
        auto const above = std::min(std::upper_bound(ticks.begin(), ticks.end(), value), ticks.end() - 1);
        ++counts[*(above - 1) + (*above - *(above - 1)) * 0.5];
    }
    histogram.addHistogram(counts);
    return histogram;
}

} // namespace Zem::Measurement
