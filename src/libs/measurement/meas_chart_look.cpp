#include "meas_chart_look.h"

#include <array>

namespace Zem::Measurement {

using Fig2::LineStyle;

namespace {

constexpr double LINE_WIDTH = 0.3; // page mm

// The palette of Okabe and Ito, "Color Universal Design" (2008), which people of every colour vision tell apart. Its
// yellow is left out, too pale for a thin line on paper.
constexpr std::array<Color, 7> LINE_COLORS{
    {{0, 114, 178}, {213, 94, 0}, {0, 158, 115}, {204, 121, 167}, {230, 159, 0}, {86, 180, 233}, {0, 0, 0}}};

constexpr std::array<LineStyle::Style, 4> LINE_STYLES{LineStyle::STYLE_FULL, LineStyle::STYLE_DASHED,
                                                      LineStyle::STYLE_DASH_DOTTED, LineStyle::STYLE_DOTTED};

} // namespace

void proposeLook(std::size_t order, Fig2::ChartParameters *parameters)
{
    Color const &color = LINE_COLORS[order % LINE_COLORS.size()];
    LineStyle::Style const style = LINE_STYLES[order / LINE_COLORS.size() % LINE_STYLES.size()];
    Fig2::Symbol symbol = Fig2::Symbol::null;
    symbol.setColor(color);
    parameters->setStyle(Fig2::ChartParameters::STYLE_LINE);
    parameters->setSymbol(symbol);
    parameters->setLineStyle(LineStyle(LINE_WIDTH, style, color));
    parameters->setFillStyle(Fig2::FillStyle(color));
}

} // namespace Zem::Measurement
