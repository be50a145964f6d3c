// figqt_stroke.h: from the line style of an element to the outline of a canvas.
#pragma once

#include "figqt_canvas.h"

#include <ZemFig2LineStyle.h>

#include <optional>

namespace Zem::Fig2Qt {

/// The thinnest line, in page millimetres: one of width 0 can be seen on every output, whatever its resolution.
inline constexpr double HAIRLINE = 0.1;

/// Nothing for a style that draws no line. The width times `scale`, a hairline at least for the width 0; dots and dashes
/// are multiples of the width. Sharp lines end at their points; so round dashes are shortened by what their ends add.
std::optional<Stroke> toStroke(Fig2::LineStyle const &style, double scale);

} // namespace Zem::Fig2Qt
