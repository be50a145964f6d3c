#include "figqt_stroke.h"

#include <algorithm>
#include <cmath>

namespace Zem::Fig2Qt {

namespace {

using Fig2::LineStyle;

// Below this, programs that show PDF leave a round dot out.
constexpr double SHORTEST_DASH = 0.01;
constexpr double WIDEST_LINE = 1e5;

/// Lengths of dash and gap in turn, in line widths.
std::vector<double> patternOf(LineStyle::Style style)
{
    switch (style) {
    case LineStyle::STYLE_DOTTED:
        return {1.0, 2.0};
    case LineStyle::STYLE_DASHED:
        return {4.0, 2.0};
    case LineStyle::STYLE_DASH_DOTTED:
        return {4.0, 2.0, 1.0, 2.0};
    default:
        return {};
    }
}

} // namespace

std::optional<Stroke> toStroke(LineStyle const &style, double scale)
{
    if (style.getStyle() == LineStyle::STYLE_NONE || style.getColor().getAlpha() == 0 ||
        !std::isfinite(style.getWidth() * scale))
        return std::nullopt;
    Stroke stroke;
    stroke.width = style.getWidth() > 0.0 ? std::min(style.getWidth() * scale, WIDEST_LINE) : HAIRLINE;
    stroke.color = style.getColor();
    stroke.round = style.getCapStyle() == LineStyle::CAP_ROUND;
    stroke.dashes = patternOf(style.getStyle());
    for (std::size_t i = 0; i < stroke.dashes.size(); ++i) {
        double const ends = !stroke.round ? 0.0 : i % 2 == 0 ? -1.0 : 1.0;
        stroke.dashes[i] = std::max(stroke.dashes[i] + ends, SHORTEST_DASH) * stroke.width;
    }
    return stroke;
}

} // namespace Zem::Fig2Qt
