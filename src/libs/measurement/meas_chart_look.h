// meas_chart_look.h: how curves look that nobody has styled yet.
#pragma once

#include <ZemFig2ChartParameters.h>

#include <cstddef>

namespace Zem::Measurement {

/// Makes a plain line of the curve that comes at `order`: each has another colour or, when all colours are taken,
/// another line style. Names and colour computation are left alone.
void proposeLook(std::size_t order, Fig2::ChartParameters *parameters);

} // namespace Zem::Measurement
