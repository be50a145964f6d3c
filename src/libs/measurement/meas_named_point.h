// meas_named_point.h: where named points lie on their curves.
#pragma once

#include <ZemFig2ChartData.h>
#include <ZemMeasNamedPoint.h>

#include <cstddef>
#include <optional>

namespace Zem::Measurement {

/// None when the curve has no such point. `index` is that of the point with the number that is meant.
std::optional<BaVec2d<double>> findPlace(NamedPoint const &point, Fig2::ChartDataset const &dataset,
                                         std::optional<std::size_t> index);

/// Equal texts mean equal points.
QString signatureOf(NamedPoint const &point);

} // namespace Zem::Measurement
