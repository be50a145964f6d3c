// ZemColorMap.h: the one colour scale that the whole application shares.
#pragma once

#include <ZemColor.h>
#include <ZemHistogramData.h>
#include <ZemLegend.h>
#include <ZemLegendData.h>
#include <ZemToleranceParams.h>

namespace Zem::Legend2 {

// The colours of the axes of a coordinate system.
inline constexpr Color color_axis_x{214, 39, 40};
inline constexpr Color color_axis_y{44, 160, 44};
inline constexpr Color color_axis_z{31, 119, 180};

/// Set by the host, read by what shows it. Getters give copies, so that what was read stays as it was. All operations
/// may be called from any thread at any time; after the first of two setters others may see it without the second.
class ColorMap
{
public:
    ColorMap() = delete;

    /// Before the host has set anything: default values, no tolerance mode, no histogram.
    static Legend getGlobalLegendParams();
    static Data getGlobalLegendData();
    static ToleranceParams getToleranceParams();
    static bool getToleranceMode();
    static HistogramData getHistogramData();

    static void setGlobalLegend(Legend const &params, Data const &data);
    static void setTolerance(bool mode, ToleranceParams const &params);
    static void setHistogramData(HistogramData const &histogram);
};

} // namespace Zem::Legend2
