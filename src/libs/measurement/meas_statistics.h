// meas_statistics.h: what colour scales and labels tell of many numbers.
#pragma once

#include <ZemHistogramData.h>
#include <ZemLegend.h>
#include <ZemLegendData.h>

#include <vector>

namespace Zem::Measurement {

/// Extremes, average and deviation. `values` is not empty and holds no NaN.
Legend2::Data statisticsOf(std::vector<double> const &values);

/// How many of the values lie in each interval of the scale's ticks; one count for each, under the value in its middle.
Legend2::HistogramData histogramOf(std::vector<double> const &values, Legend2::Legend const &legend,
                                   Legend2::Data const &data);

} // namespace Zem::Measurement
